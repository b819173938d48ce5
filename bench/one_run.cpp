#include "one_run.h"

#include <csignal>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <stdio.h>
#include <utility>

#include "sax_parsers.h"
#include "tree_libraries.h"

namespace bench {
namespace {

/// A field of the process's status, such as "VmHWM", in bytes.
long memoryField(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind(name + ":", 0) == 0) return std::stol(line.substr(name.size() + 1)) * 1024;
    }
    throw std::runtime_error("this system doesn't tell " + name);
}

/// Of the resident memory, from here on.
class Growth {
public:
    Growth() {
        // Makes the peak that the system remembers the present.
        std::ofstream("/proc/self/clear_refs") << 5;
        before = memoryField("VmRSS");
    }

    long peak() const { return memoryField("VmHWM") - before; }

private:
    long before;
};

/// Ours reads the file itself.
Source sourceFor(const std::string& contestant, const std::string& fileName) {
    if (contestant == "qvox") return {fileName, {}};
    std::ifstream file(fileName, std::ios::binary | std::ios::ate);
    std::string bytes(static_cast<std::size_t>(file.tellg()), '\0');
    file.seekg(0);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file) throw std::runtime_error("cannot read " + fileName);
    return {fileName, std::move(bytes)};
}

std::string quoted(const std::string& argument) {
    std::string result = "'";
    for (const char one : argument) result += one == '\'' ? "'\\''" : std::string(1, one);
    return result + "'";
}

void print(const RunFigures& figures) {
    std::cout << figures.peak << ' ' << figures.elements << std::endl;
}

}  // namespace

void oneParse(const std::string& parserName, const std::string& fileName) {
    const SaxParser& parser = saxParser(parserName);
    const Source source = sourceFor(parserName, fileName);
    const Growth growth;
    const Tally tally = parser.parse(source);
    print({growth.peak(), tally.elements});
}

void oneTree(const std::string& libraryName, const std::string& fileName) {
    const TreeLibrary& library = treeLibrary(libraryName);
    const Source source = sourceFor(libraryName, fileName);
    const Growth growth;
    const std::unique_ptr<LoadedTree> tree = library.load(source);
    const long peak = growth.peak();
    print({peak, tree->walk()});
}

RunFigures measureRun(const std::string& option, const std::string& name,
                      const std::string& fileName, const std::filesystem::path& directory,
                      const std::function<void(std::FILE* input)>& feed) {
    const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
    const std::string output = (directory / "figures").string();
    const std::string command = quoted(program) + " " + option + " " + quoted(name) + " " +
                                quoted(fileName) + " >" + quoted(output);
    // A process that ends early shows by its result.
    std::signal(SIGPIPE, SIG_IGN);
    const auto close = [](std::FILE* stream) { pclose(stream); };
    std::unique_ptr<std::FILE, decltype(close)> input(popen(command.c_str(), "w"), close);
    if (!input) throw std::runtime_error("cannot run " + command);
    if (feed) feed(input.get());
    if (pclose(input.release()) != 0) throw std::runtime_error("failure of " + command);
    RunFigures figures;
    std::ifstream(output) >> figures.peak >> figures.elements;
    return figures;
}

}  // namespace bench

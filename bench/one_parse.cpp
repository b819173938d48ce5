#include "one_parse.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <stdio.h>

#include "sax_parsers.h"

namespace bench {
namespace {

const std::string peakLabel = "peak growth = ";
// In the statistics that the library prints under QVOX_MEMSTAT.
const std::string heapLabel = "heap total size = ";

/// A field of the process's status, such as "VmHWM", in bytes.
long memoryField(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind(name + ":", 0) == 0) return std::stol(line.substr(name.size() + 1)) * 1024;
    }
    throw std::runtime_error("this system doesn't tell " + name);
}

std::string quoted(const std::string& argument) {
    std::string result = "'";
    for (const char one : argument) result += one == '\'' ? "'\\''" : std::string(1, one);
    return result + "'";
}

std::string outputOf(const std::string& command) {
    const auto close = [](std::FILE* stream) { pclose(stream); };
    std::unique_ptr<std::FILE, decltype(close)> stream(popen(command.c_str(), "r"), close);
    if (!stream) throw std::runtime_error("cannot run " + command);
    std::string output;
    char block[4096];
    for (std::size_t count = 1; count != 0;) {
        count = std::fread(block, 1, sizeof block, stream.get());
        output.append(block, count);
    }
    if (pclose(stream.release()) != 0) throw std::runtime_error("failure of " + command);
    return output;
}

/// The number behind `label`, or 0 where the output doesn't have it.
long numberBehind(const std::string& label, const std::string& output) {
    const std::size_t found = output.find(label);
    return found == std::string::npos ? 0 : std::stol(output.substr(found + label.size()));
}

}  // namespace

void oneParse(const std::string& parserName, const std::string& fileName) {
    const SaxParser& parser = saxParser(parserName);
    const long before = memoryField("VmRSS");
    parser.parse(fileName.c_str());
    std::cout << peakLabel << memoryField("VmHWM") - before << std::endl;
}

ParseMemory measureParse(const std::string& parserName, const std::string& fileName) {
    const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
    const std::string output = outputOf("QVOX_MEMSTAT=1 " + quoted(program) + " " + oneParseOption +
                                        " " + quoted(parserName) + " " + quoted(fileName));
    return {numberBehind(peakLabel, output), numberBehind(heapLabel, output)};
}

}  // namespace bench

// The benchmarks' program: what is measured, and how much of it.
#include <algorithm>
#include <exception>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "documents.h"
#include "one_run.h"
#include "sections.h"

namespace bench {
namespace {

struct Section {
    std::string name;
    bool (*print)(const Settings& settings, std::ostream& stream);
};

const std::vector<Section> allSections = {{"sax", printSax},
                                          {"pairs", printPairs},
                                          {"tree", printTrees},
                                          {"memory", printMemory},
                                          {"large", printLargeTrees},
                                          {"range", printRanges},
                                          {"side-by-side", printSideBySide}};

constexpr const char* help =
    "qvox_bench [options] [section...]   all sections where none is named\n"
    "  sax             times of the parsers, as they report events\n"
    "  pairs           what should cost next to nothing\n"
    "  tree            times of the libraries' trees\n"
    "  memory          peaks of memory\n"
    "  large           what a step costs in very wide and very deep trees\n"
    "  range           calls of ranges a second\n"
    "  side-by-side    two parses on two threads\n"
    "\n"
    "  --rows=REGEX         only rows in whose name it is found\n"
    "  --size=BYTES         of each document, about; 16000000\n"
    "  --stream-size=BYTES  of the stream for \"memory\"; 1000000000\n"
    "  --rounds=NUMBER      of which the median counts; 5\n"
    "  --check              fail where something isn't as wanted\n"
    "\n"
    "qvox_bench --one-parse PARSER FILE  do just that, as for a profiler\n"
    "qvox_bench --one-tree LIBRARY FILE  the same into a tree, and free it\n";

class BadArgument : public std::invalid_argument {
public:
    explicit BadArgument(const std::string& argument)
        : invalid_argument("don't know " + argument + "\n" + help) {}
};

struct Options {
    Settings settings;
    std::vector<Section> sections;
    bool check = false;
};

const std::map<std::string, std::function<void(Options&, const std::string&)>> optionsWithValue = {
    {"--rows", [](Options& one, const std::string& value) { one.settings.rows = value; }},
    {"--size",
     [](Options& one, const std::string& value) { one.settings.documentSize = std::stoul(value); }},
    {"--stream-size",
     [](Options& one, const std::string& value) { one.settings.streamSize = std::stoul(value); }},
    {"--rounds",
     [](Options& one, const std::string& value) {
         one.settings.rounds = std::max(1, std::stoi(value));
     }},
};

void readArgument(const std::string& argument, Options& options) {
    if (argument == "--check") {
        options.check = true;
        return;
    }
    const std::size_t equals = argument.find('=');
    const auto option = optionsWithValue.find(argument.substr(0, equals));
    if (option != optionsWithValue.end() && equals != std::string::npos) {
        option->second(options, argument.substr(equals + 1));
        return;
    }
    const auto section =
        std::find_if(allSections.begin(), allSections.end(),
                     [&argument](const Section& one) { return one.name == argument; });
    if (section == allSections.end()) throw BadArgument(argument);
    options.sections.push_back(*section);
}

Options read(const std::vector<std::string>& arguments) {
    Options options;
    for (const std::string& argument : arguments) readArgument(argument, options);
    if (options.sections.empty()) options.sections = allSections;
    return options;
}

/// Returns whether everything is as wanted.
bool print(const Options& options) {
    printConditions(options.settings, std::cout);
    bool allMet = true;
    for (const Section& section : options.sections) {
        allMet = section.print(options.settings, std::cout) && allMet;
    }
    return allMet;
}

int run(const std::vector<std::string>& arguments) {
    if (arguments.size() == 3 && arguments[0] == oneParseOption) {
        oneParse(arguments[1], arguments[2]);
        return 0;
    }
    if (arguments.size() == 3 && arguments[0] == oneTreeOption) {
        oneTree(arguments[1], arguments[2]);
        return 0;
    }
    if (arguments.size() == 1 && arguments[0] == "--help") {
        std::cout << help;
        return 0;
    }
    Options options = read(arguments);
    const TemporaryDirectory directory;
    options.settings.directory = directory.path();
    const bool allMet = print(options);
    return allMet || !options.check ? 0 : 1;
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
    try {
        return bench::run(std::vector<std::string>(argv + 1, argv + argc));
    } catch (const std::exception& failure) {
        std::cerr << "qvox_bench: " << failure.what() << '\n';
        return 2;
    }
}

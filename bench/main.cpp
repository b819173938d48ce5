// The benchmarks' program: Google Benchmark's own options and table, then the speeds side by side.
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <regex>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

#include <benchmark/benchmark.h>

#include "documents.h"
#include "one_parse.h"
#include "results.h"
#include "suite.h"
#include "tree_libraries.h"

namespace bench {
namespace {

/// Repetitions of different cases alternate, so that a slow moment of the machine hits all alike.
/// The options of the command line come behind these and win.
const std::vector<std::string> defaultOptions = {
    "--benchmark_enable_random_interleaving=true", "--benchmark_repetitions=9",
    "--benchmark_min_time=0.1", "--benchmark_display_aggregates_only=true"};

constexpr std::size_t defaultDocumentSize = 16'000'000;

struct Options {
    bool checkMinimums = false;
    std::size_t documentSize = defaultDocumentSize;
    /// Where the documents are written and kept, if anywhere.
    std::optional<std::filesystem::path> directory;
    /// Everything else, for Google Benchmark.
    std::vector<std::string> rest;
};

void printHelp() {
    std::cout << "qvox_bench [--check-minimums]        fail where an asked minimum is missed\n"
                 "           [--document-size=BYTES]   of each document, about; 16000000\n"
                 "           [--documents=DIRECTORY]   keep the documents there\n"
                 "           [--one-parse PARSER FILE] do just that, as for a profiler\n"
                 "           [--one-tree LIBRARY FILE] the same into a tree, and free it\n"
                 "and these:\n\n";
    benchmark::PrintDefaultHelp();
}

/// The value of "option=value", if the argument is that.
std::optional<std::string> valueOf(const std::string& option, const std::string& argument) {
    if (argument.rfind(option + "=", 0) != 0) return std::nullopt;
    return argument.substr(option.size() + 1);
}

Options read(const std::vector<std::string>& arguments) {
    Options options;
    for (const std::string& argument : arguments) {
        if (argument == "--check-minimums") {
            options.checkMinimums = true;
        } else if (const auto size = valueOf("--document-size", argument)) {
            options.documentSize = std::stoul(*size);
        } else if (const auto directory = valueOf("--documents", argument)) {
            options.directory = *directory;
        } else {
            options.rest.push_back(argument);
        }
    }
    return options;
}

/// Hands the options over to Google Benchmark, which keeps `program`; false where it doesn't know
/// one.
bool initialize(char* program, const std::vector<std::string>& options) {
    std::vector<std::string> arguments = defaultOptions;
    arguments.insert(arguments.end(), options.begin(), options.end());
    std::vector<char*> pointers = {program};
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    int count = static_cast<int>(pointers.size());
    pointers.push_back(nullptr);
    benchmark::Initialize(&count, pointers.data(), printHelp);
    return !benchmark::ReportUnrecognizedArguments(count, pointers.data());
}

/// Sections go by the filter of the benchmarks.
bool isWanted(const Section& section) {
    const std::string filter = benchmark::GetBenchmarkFilter();
    return filter.empty() || filter == "all" ||
           std::regex_search(section.name, std::regex(filter, std::regex::extended));
}

/// Returns whether everything that is asked for is met.
bool runSuite(const std::filesystem::path& directory, std::size_t documentSize) {
    Suite suite(directory, documentSize);
    addGroups(suite);
    Results results(isatty(STDOUT_FILENO) != 0 ? Results::OO_Defaults : Results::OO_Tabular);
    benchmark::RunSpecifiedBenchmarks(&results);
    printSpeeds(suite, results, std::cout);
    bool allMet = printRatios(suite, results, std::cout);
    for (const Section& section : suite.sections()) {
        if (isWanted(section)) allMet = section.print(std::cout) && allMet;
    }
    return allMet;
}

int run(char* program, const std::vector<std::string>& arguments) {
    if (arguments.size() == 3 && arguments[0] == oneParseOption) {
        oneParse(arguments[1], arguments[2]);
        return 0;
    }
    if (arguments.size() == 3 && arguments[0] == oneTreeOption) {
        treeLibrary(arguments[1]).load(arguments[2].c_str());
        return 0;
    }
    const Options options = read(arguments);
    if (!initialize(program, options.rest)) return 2;
    if (options.directory) std::filesystem::create_directories(*options.directory);
    std::optional<TemporaryDirectory> temporary;
    if (!options.directory) temporary.emplace();
    const bool allMet =
        runSuite(options.directory ? *options.directory : temporary->path(), options.documentSize);
    return allMet || !options.checkMinimums ? 0 : 1;
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
    try {
        return bench::run(argv[0], std::vector<std::string>(argv + 1, argv + argc));
    } catch (const std::exception& failure) {
        std::cerr << "qvox_bench: " << failure.what() << '\n';
        return 2;
    }
}

/// \file
/// A single parse in a process of its own: for the measurement of memory, and for profilers.
#ifndef QVOX_BENCH_ONE_RUN_H
#define QVOX_BENCH_ONE_RUN_H

#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>

namespace bench {

/// The argument that makes the program do one parse, as in "--one-parse PARSER FILE".
inline constexpr const char* oneParseOption = "--one-parse";
/// The same into a tree, as in "--one-tree LIBRARY FILE".
inline constexpr const char* oneTreeOption = "--one-tree";

/// Do it, and print what measureRun() reads.
/// @{
void oneParse(const std::string& parserName, const std::string& fileName);
void oneTree(const std::string& libraryName, const std::string& fileName);
/// @}

struct RunFigures {
    /// Highest growth of the process's resident memory by the parse and, if there is one, the tree;
    /// in bytes, and without the document itself where that is in memory.
    long peak = 0;
    long elements = 0;
};

/// Runs this program again for one of the options. `feed` writes to its standard input; what it
/// prints goes through a file in `directory`. Raises std::runtime_error where that fails.
RunFigures measureRun(const std::string& option, const std::string& name,
                      const std::string& fileName, const std::filesystem::path& directory,
                      const std::function<void(std::FILE* input)>& feed = {});

}  // namespace bench

#endif

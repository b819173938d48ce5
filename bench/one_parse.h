/// \file
/// A single parse in a process of its own: for the measurement of memory, and for profilers.
#ifndef QVOX_BENCH_ONE_PARSE_H
#define QVOX_BENCH_ONE_PARSE_H

#include <string>

namespace bench {

/// The argument that makes the program do one parse, as in "--one-parse PARSER FILE".
inline constexpr const char* oneParseOption = "--one-parse";

/// Parses and prints how far the resident memory of the process grew meanwhile.
void oneParse(const std::string& parserName, const std::string& fileName);

/// The memory of a parse, in bytes.
struct ParseMemory {
    /// Highest growth of the process's resident memory.
    long peak = 0;
    /// Size of the heap of the parse; 0 for the parsers of others.
    long heap = 0;
};

/// Runs this program again for one parse. Raises std::runtime_error where that fails.
ParseMemory measureParse(const std::string& parserName, const std::string& fileName);

}  // namespace bench

#endif

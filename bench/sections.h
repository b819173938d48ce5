/// \file
/// The sections of the program's output: what is measured, each in a file of its own.
#ifndef QVOX_BENCH_SECTIONS_H
#define QVOX_BENCH_SECTIONS_H

#include <cstddef>
#include <filesystem>
#include <iosfwd>
#include <regex>
#include <string>

namespace bench {

struct Settings {
    std::size_t documentSize = 16'000'000;
    std::size_t streamSize = 1'000'000'000;
    int rounds = 5;
    /// Rows that it isn't found in are left out.
    std::regex rows{""};
    /// Where documents are written.
    std::filesystem::path directory;

    bool wants(const std::string& row) const { return std::regex_search(row, rows); }
};

/// Each prints its tables in Markdown, raises std::runtime_error where libraries don't see the same
/// in a document, and returns whether everything reaches what is wanted of it.
/// @{
bool printSax(const Settings& settings, std::ostream& stream);
bool printPairs(const Settings& settings, std::ostream& stream);
bool printTrees(const Settings& settings, std::ostream& stream);
bool printMemory(const Settings& settings, std::ostream& stream);
bool printLargeTrees(const Settings& settings, std::ostream& stream);
bool printRanges(const Settings& settings, std::ostream& stream);
bool printSideBySide(const Settings& settings, std::ostream& stream);
/// @}

/// A paragraph on what the figures hold for: machine, compiler, versions, size of documents.
void printConditions(const Settings& settings, std::ostream& stream);

}  // namespace bench

#endif

// Tables of cases, written as text.
#pragma once

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace qvox_test {

using Row = std::vector<std::string>;

// With \n, \r, \t and \s, a blank, as what they stand for.
inline std::string unescaped(std::string text) {
    for (const char* const escape : {"n\n", "r\r", "t\t", "s "}) {
        text = std::regex_replace(text, std::regex("\\\\" + std::string(escape, 1)), escape + 1);
    }
    return text;
}

inline std::string times(std::size_t count, const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) result += text;
    return result;
}

// The parts of a text between what divides them.
inline Row parts_of(const std::string& text, const std::string& divider) {
    const std::regex divided(divider);
    return {std::sregex_token_iterator(text.begin(), text.end(), divided, -1), {}};
}

// The rows of a table: a line each, its columns between "=>". A line that begins with a blank
// continues the one above it, and one that begins with "#" is a remark.
inline std::vector<Row> raw_rows_of(const std::string& table, const std::string& divider) {
    std::vector<Row> rows;
    for (const std::string& line :
         parts_of(std::regex_replace(table, std::regex("\n +"), " "), divider)) {
        if (!line.empty()) rows.push_back(parts_of(line, " *=> *"));
    }
    EXPECT_FALSE(rows.empty());
    return rows;
}

// All columns but the last are unescaped.
inline std::vector<Row> rows_of(const std::string& table) {
    std::vector<Row> rows = raw_rows_of(table, "(\n#[^\n]*)*\n");
    for (Row& row : rows) std::transform(row.begin(), row.end() - 1, row.begin(), unescaped);
    return rows;
}

// Rows of which several may stand on a line, with two blanks between them. Each has that many
// columns, of which the last ones may be empty.
inline std::vector<Row> cells_of(const std::string& table, std::size_t columns = 2) {
    std::vector<Row> rows = raw_rows_of(table, "(\n#[^\n]*)*\n|  +");
    for (Row& row : rows) row.resize(columns);
    return rows;
}

// Compares what `action` makes of each first column with the second.
template <typename Action>
void expect_rows(const char* table, Action action) {
    for (const Row& row : rows_of(table)) EXPECT_EQ(action(row[0]), row.at(1)) << row[0];
}

template <typename Action>
void expect_cells(const char* table, Action action) {
    for (const Row& row : cells_of(table)) EXPECT_EQ(action(row[0]), row[1]) << row[0];
}

}  // namespace qvox_test

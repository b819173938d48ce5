// Tables of cases, written as text.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace qvox_test {

using Row = std::vector<std::string>;

// With every match of a regular expression replaced; \1, the first group, is $1 in what comes
// there.
std::string replaced(const std::string& text, const std::string& pattern, const std::string& by);

// With \n, \r, \t and \s, a blank, as what they stand for.
std::string unescaped(std::string text);

std::string times(std::size_t count, const std::string& text);

// The parts of a text between what divides them.
Row parts_of(const std::string& text, const std::string& divider);

// The rows of a table: a line each, its columns between "=>". A line that begins with a blank
// continues the one above it, and one that begins with "#" is a remark. All columns but the last
// are unescaped.
std::vector<Row> rows_of(const std::string& table);

// Rows of which several may stand on a line, with two blanks between them. Each has that many
// columns, of which the last ones may be empty.
std::vector<Row> cells_of(const std::string& table, std::size_t columns = 2);

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

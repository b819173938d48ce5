#include "support/tables.h"

#include <algorithm>
#include <regex>

namespace qvox_test {

// The one place where regular expressions are compiled, which takes a compiler long.
std::string replaced(const std::string& text, const std::string& pattern, const std::string& by) {
    return std::regex_replace(text, std::regex(pattern), by);
}

std::string unescaped(std::string text) {
    for (const char* const escape : {"n\n", "r\r", "t\t", "s "}) {
        text = replaced(text, "\\\\" + std::string(escape, 1), escape + 1);
    }
    return text;
}

std::string times(std::size_t count, const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) result += text;
    return result;
}

Row parts_of(const std::string& text, const std::string& divider) {
    const std::regex divided(divider);
    return {std::sregex_token_iterator(text.begin(), text.end(), divided, -1), {}};
}

namespace {

std::vector<Row> raw_rows_of(const std::string& table, const std::string& divider) {
    std::vector<Row> rows;
    for (const std::string& line : parts_of(replaced(table, "\n +", " "), divider)) {
        if (!line.empty()) rows.push_back(parts_of(line, " *=> *"));
    }
    EXPECT_FALSE(rows.empty());
    return rows;
}

}  // namespace

std::vector<Row> rows_of(const std::string& table) {
    std::vector<Row> rows = raw_rows_of(table, "(\n#[^\n]*)*\n");
    for (Row& row : rows) std::transform(row.begin(), row.end() - 1, row.begin(), unescaped);
    return rows;
}

std::vector<Row> cells_of(const std::string& table, std::size_t columns) {
    std::vector<Row> rows = raw_rows_of(table, "(\n#[^\n]*)*\n|  +");
    for (Row& row : rows) row.resize(columns);
    return rows;
}

}  // namespace qvox_test

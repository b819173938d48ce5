// Tables of cases, and the events of a document with a document type in a form that fits in them.
#pragma once

#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/recorder.h"

namespace qvox_test {

using Row = std::vector<std::string>;

// The rows of a table: a line each, its columns between "=>". A line that begins with a blank
// continues the one above it. All but the last column may have \n, \r, \t and \s, a blank.
inline std::vector<Row> rows_of(const std::string& table) {
    std::istringstream lines(std::regex_replace(table, std::regex("\n +"), " "));
    std::vector<Row> rows;
    for (std::string line; std::getline(lines, line);) {
        if (line.empty()) continue;
        const std::regex divider(" *=> *");
        Row row(std::sregex_token_iterator(line.begin(), line.end(), divider, -1), {});
        for (auto column = row.begin(); column + 1 < row.end(); ++column) {
            for (const char* const escape : {"n\n", "r\r", "t\t", "s "}) {
                const std::regex written("\\\\" + std::string(escape, 1));
                *column = std::regex_replace(*column, written, escape + 1);
            }
        }
        rows.push_back(row);
    }
    EXPECT_GT(rows.size(), 1U);
    return rows;
}

// Compares what `action` makes of each first column with the second.
template <typename Action>
void expect_rows(const char* table, Action action) {
    for (const Row& row : rows_of(table)) EXPECT_EQ(action(row[0]), row.at(1)) << row[0];
}

// The events, joined, in short: "<e" and ">e" for the start and end of the entity e, "&e" for one
// directly behind the other; "(a" and ")" for the start and end of the element a without namespace,
// with its attributes as they are; "'x'" for characters; "]" for endDTD; and "element",
// "attribute", "internal", "external" and "notation" for declarations.
inline std::string events_of(const std::string& document, const Options& options = {}) {
    const char* const forms[][2] = {
        {"startEntity '([^']*)'\nendEntity '\\1'\n", "&$1\n"},
        {"startEntity '([^']*)'", "<$1"},
        {"endEntity '([^']*)'", ">$1"},
        {"startElement - '([^']*)' '\\1'", "($1"},
        {"endElement - [^\n]*", ")"},
        {"characters '", "'"},
        {"endDTD\n", "]\n"},
        {"(element|attribute|notation)Decl ", "$1 "},
        {"(internal|external)EntityDecl ", "$1 "},
        {"^startDocument\n", ""},
        {"endDocument\n$", ""},
    };
    std::string text = parse_bytes(document, options).events;
    for (const auto& form : forms) text = std::regex_replace(text, std::regex(form[0]), form[1]);
    return joined(text);
}

inline std::string events_of(const std::string& document, const std::vector<File>& files) {
    Options options;
    options.files = files;
    return events_of(document, options);
}

// What stands in front of, or behind, the first `mark`; the whole text where there is none.
inline std::string in_front_of(const std::string& mark, const std::string& text) {
    return text.substr(0, text.find(mark));
}
inline std::string behind(const std::string& mark, const std::string& text) {
    const std::size_t at = text.find(mark);
    return at == std::string::npos ? text : text.substr(at + mark.size());
}

}  // namespace qvox_test

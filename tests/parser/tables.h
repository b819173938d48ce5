// Tables of cases, and the events of a document in a form that fits in them.
#pragma once

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/recorder.h"

namespace qvox_test {

using Row = std::vector<std::string>;

// With \n, \r, \t and \s, a blank, as what they stand for.
inline std::string unescaped(std::string text) {
    for (const char* const escape : {"n\n", "r\r", "t\t", "s "}) {
        text = std::regex_replace(text, std::regex("\\\\" + std::string(escape, 1)), escape + 1);
    }
    return text;
}

// The parts of a text between what divides them.
inline Row parts_of(const std::string& text, const char* divider) {
    const std::regex divided(divider);
    return {std::sregex_token_iterator(text.begin(), text.end(), divided, -1), {}};
}

// The rows of a table: a line each, its columns between "=>", of which the last stands as it is and
// the others are unescaped. A line that begins with a blank continues the one above it.
inline std::vector<Row> rows_of(const std::string& table) {
    std::vector<Row> rows;
    for (const std::string& line :
         parts_of(std::regex_replace(table, std::regex("\n +"), " "), "\n+")) {
        Row row = parts_of(line, " *=> *");
        std::transform(row.begin(), row.end() - 1, row.begin(), unescaped);
        if (!line.empty()) rows.push_back(row);
    }
    EXPECT_GT(rows.size(), 1U);
    return rows;
}

// Compares what `action` makes of each first column with the second.
template <typename Action>
void expect_rows(const char* table, Action action) {
    for (const Row& row : rows_of(table)) EXPECT_EQ(action(row[0]), row.at(1)) << row[0];
}

// The events between startDocument and endDocument, joined, in short: "<e" and ">e" for the start
// and end of the entity e, "&e" for one directly behind the other; "(a" and ")" for the start and
// end of the element a without namespace, "(" and ")" with their arguments for other elements; its
// attributes as they are, or [name='value'] and [name type='value']; "+" and "-" for the start and
// end of a prefix mapping; "'x'" for characters, "!" for a comment, "?" for a processing
// instruction; "]" for endDTD; and "element", "attribute", "internal", "external" and "notation"
// for declarations.
inline std::string short_form(std::string text) {
    const char* const forms[][2] = {
        {"startEntity '([^']*)'\nendEntity '\\1'\n", "&$1\n"},
        {"startEntity '([^']*)'", "<$1"},
        {"endEntity '([^']*)'", ">$1"},
        {"startElement - '([^']*)' '\\1'", "($1"},
        {"\\[- '([^']*)' '\\1' - '", "[$1='"},
        {"\\[- '([^']*)' '\\1' '([^']*)' '", "[$1 $2='"},
        {"startElement ", "("},
        {"endElement - [^\n]*", ")"},
        {"endElement ", ")"},
        {"startPrefixMapping ", "+"},
        {"endPrefixMapping ", "-"},
        {"characters '", "'"},
        {"comment '", "!'"},
        {"processingInstruction '", "?'"},
        {"endDTD\n", "]\n"},
        {"(element|attribute|notation)Decl ", "$1 "},
        {"(internal|external)EntityDecl ", "$1 "},
        {"^startDocument\n(?!error)", ""},
        {"endDocument\n$", ""},
    };
    for (const auto& form : forms) text = std::regex_replace(text, std::regex(form[0]), form[1]);
    return joined(text);
}

inline std::string events_of(const std::string& document, const Options& options = {}) {
    const Outcome outcome = parse_bytes(document, options);
    const bool isTold = outcome.events.find("\nwarning ") != std::string::npos;
    EXPECT_EQ(outcome.output.empty(), outcome.code == 0 && !isTold) << document;
    const bool isWhole = outcome.events.find("endDocument\n") + 12 == outcome.events.size();
    EXPECT_EQ(isWhole, outcome.code == 0) << document;
    return short_form(outcome.events);
}

inline std::string events_of(const std::string& document, const std::vector<File>& files) {
    Options options;
    options.files = files;
    return events_of(document, options);
}

inline void expect_documents(const char* table) {
    expect_rows(table, [](const std::string& document) { return events_of(document); });
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

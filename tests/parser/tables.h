// The events of a document in a form that fits in tables.
#pragma once

#include "support/recorder.h"
#include "support/tables.h"

namespace qvox_test {

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
    for (const auto& form : forms) text = replaced(text, form[0], form[1]);
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

// One document: its parse, and what is said of a failure.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include <qvox/qvox.h>

#include "escape.h"

struct Failure {
    int line = 0;         // 0 where the failure has no place, as with a file that can't be opened
    int column = 0;       // 0 where only the line is known
    std::string message;  // in UTF-8, escaped
};

// Runs the parse of the file. Returns what went wrong, if anything did. Lets WriteError through.
std::optional<Failure> failure_of(const std::function<void()>& parse, const std::string& fileName);

// Parses the file of exactly this name with the parser's handlers, in the same way.
std::optional<Failure> parse_document(qvox::SAXParser& parser, const std::string& fileName);

// Where a file is that a user has named, and its name in messages. "-" is standard input.
std::string readable_path(const std::string& fileName);
std::string shown_name(const std::string& fileName);

// "FILE:LINE:COLUMN", without what isn't known of the place.
std::string describe_place(const std::string& fileName, const Failure& failure);
// "FILE:LINE:COLUMN: message", the same way, with a line feed.
std::string describe(const std::string& fileName, const Failure& failure);

// Appends a message of the library about the file. The library repeats the name of the file in some
// of them as if it were Shift_JIS; here the name is itself.
void append_message(std::string& out, const qvox::Xstring& message, const std::string& fileName,
                    Style style);

// A line of a document as text, for people to look at.
#pragma once

#include <optional>
#include <string>

struct SourceLine {
    std::string text;   // in UTF-8, on one line of the terminal, perhaps a part only
    std::size_t cells;  // of the text in front of the place
};

// The line around a column, which counts cells as the library does. Nothing where the file can't be
// read again, or has no such place. What is no text of the document's encoding is shown as \x83.
std::optional<SourceLine> source_line(const std::string& path, int line, int column);

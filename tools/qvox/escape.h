// Text for the terminal: UTF-8, in which nothing is invisible and nothing ends a line.
//
// A character that can't be seen, or that changes how others are shown, is written as its number:
// \u{7f}, \u{200b}, and so is half a surrogate pair. A byte of a file name that is no part of a
// UTF-8 character is written as its value: \x83. Tab, line feed and carriage return are \t, \n and
// \r.
#pragma once

#include <string>

#include <qvox/xstring.h>

enum class Style {
    PLAIN,   // for prose and file names: backslash and quote stand for themselves
    QUOTED,  // for the inside of quotes: they are \\ and \", so that the text can be read back
};

// Both append to `out`. A file name is in Shift_JIS on Windows and otherwise any bytes, most often
// UTF-8.
void escape_units(std::string& out, const unsigned short* units, int count, Style style);
void escape_file_name(std::string& out, const std::string& name, Style style);

// Appends the text in quotes, or the word null.
void quote(std::string& out, const qvox::Xstring& text);

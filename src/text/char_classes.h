// Which characters are white space, and which may stand in a name: the character classes of XML
// 1.0, Appendix B (first to fourth edition).
//
// The inline functions take a character as the scanner has it, where -1 is the end of the input and
// belongs to no class. They answer for ASCII from a small table; the range tables are for the rest.
#pragma once

#include "text/wide.h"

namespace qvox {

enum CharClass : unsigned char {
    CLASS_NONE = 0,    // controls
    CLASS_SPACE = 1,   // tab, LF, CR, space
    CLASS_SYMBOL = 2,  // printable, but not in a name
    CLASS_NAME = 3     // may stand inside a name: letters, digits, - . : _
};

// The classes of ASCII.
extern const CharClass charClassTable[128];

// The productions of Appendix B, by binary search.
bool is_base_char(unsigned code);
bool is_ideographic(unsigned code);
bool is_letter(unsigned code);
bool is_digit(unsigned code);
bool is_combining_char(unsigned code);
bool is_extender(unsigned code);

// The classes of name characters from 0x80 up: Letter, and NameChar.
bool is_wide_name_start(unsigned code);
bool is_wide_name_char(unsigned code);

inline bool is_space(int c) {
    const auto code = static_cast<unsigned>(c);
    return code < 0x80 && charClassTable[code] == CLASS_SPACE;
}

inline bool is_name_start(int c) {
    const auto code = static_cast<unsigned>(c);
    // The name characters that can't begin a name are - . and the digits, all up to '9'.
    return code < 0x80 ? code > '9' && charClassTable[code] == CLASS_NAME
                       : is_wide_name_start(code);
}

inline bool is_name_char(int c) {
    const auto code = static_cast<unsigned>(c);
    if (code >= 0x80) return is_wide_name_char(code);
    return charClassTable[code] == CLASS_NAME;
}

// Whether the text is a name (XML 1.0, production Name) or empty. Colons are like other name
// characters here.
bool isName(const Unit* text);

}  // namespace qvox

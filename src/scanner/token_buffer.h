// The text of the token in hand. It grows as long as memory allows.
#pragma once

#include <cstddef>

#include "text/wide.h"

namespace qvox {

// The lexer's and its helpers' to write.
extern Unit* tokenText;       // the units, with room for a NUL behind them
extern std::size_t tokenLen;  // units in use
extern std::size_t tokenCap;  // units that fit

void token_buffer_create();
void token_buffer_destroy();

// Doubles the capacity.
void grow_token_buffer();

inline void append_unit(Unit unit) {
    if (tokenLen == tokenCap) grow_token_buffer();
    tokenText[tokenLen++] = unit;
}

// Appends a character, one above U+FFFF as a surrogate pair. The end of input appends nothing.
inline void append_char(int c) {
    if (c > 0xFFFF) {
        append_unit(static_cast<Unit>(0xD800 + ((c - 0x10000) >> 10)));
        append_unit(static_cast<Unit>(0xDC00 + ((c - 0x10000) & 0x3FF)));
    } else if (c >= 0) {
        append_unit(static_cast<Unit>(c));
    }
}

// Whether the text ends in `units`.
inline bool token_ends_in(char before, char middle, char last) {
    return tokenLen >= 3 && tokenText[tokenLen - 1] == last && tokenText[tokenLen - 2] == middle &&
           tokenText[tokenLen - 3] == before;
}

// Ends the text with a NUL at its present length and returns it.
inline const Unit* terminated_token() {
    tokenText[tokenLen] = 0;
    return tokenText;
}

}  // namespace qvox

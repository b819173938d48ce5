// The text of the token in hand. It grows as long as memory allows.
#pragma once

#include <cstddef>

#include "runtime/growing_array.h"
#include "text/wide.h"

namespace qvox {

class TokenBuffer {
public:
    TokenBuffer() : tokenText(FIRST_CAPACITY) { terminate(); }

    const Unit* text() const { return tokenText.data(); }
    std::size_t length() const { return tokenLen; }
    Unit last() const { return tokenText[tokenLen - 1]; }

    void clear() { tokenLen = 0; }
    // Cuts the text off at a shorter length.
    void shorten_to(std::size_t length) { tokenLen = length; }

    void append_unit(Unit unit) {
        if (room() == 0) tokenText.grow();
        tokenText[tokenLen++] = unit;
    }

    // Appends a character, one above U+FFFF as a surrogate pair.
    void append_char(int c) {
        if (c > 0xFFFF) {
            append_unit(static_cast<Unit>(0xD800 + ((c - 0x10000) >> 10)));
            append_unit(static_cast<Unit>(0xDC00 + ((c - 0x10000) & 0x3FF)));
        } else {
            append_unit(static_cast<Unit>(c));
        }
    }

    // Appends what `fill` stores: it is given a place and the number of units that fit there, at
    // least one, and returns how many it has stored.
    template <typename Fill>
    void append_by(Fill fill) {
        if (room() == 0) tokenText.grow();
        tokenLen += fill(tokenText.data() + tokenLen, room());
    }

    // Whether the text ends in these units.
    bool ends_in(char before, char lastUnit) const {
        return tokenLen >= 2 && tokenText[tokenLen - 1] == lastUnit &&
               tokenText[tokenLen - 2] == before;
    }
    bool ends_in(char before, char middle, char lastUnit) const {
        return tokenLen >= 3 && ends_in(middle, lastUnit) && tokenText[tokenLen - 3] == before;
    }

    // Ends the text with a NUL at its present length and returns it.
    Unit* terminate() {
        tokenText[tokenLen] = 0;
        return tokenText.data();
    }

private:
    // Not the size of the largest token, which few documents have: memory that is never touched
    // costs a small document dearly.
    static constexpr std::size_t FIRST_CAPACITY = 1024;

    // A place is kept free for the NUL.
    std::size_t room() const { return tokenText.capacity() - 1 - tokenLen; }

    GrowingArray<Unit> tokenText;
    std::size_t tokenLen = 0;
};

}  // namespace qvox

// The text of the token in hand. It grows as long as memory allows.
#pragma once

#include <cstddef>
#include <cstring>

#include "text/wide.h"

namespace qvox {

class TokenBuffer {
public:
    TokenBuffer();
    TokenBuffer(const TokenBuffer&) = delete;
    TokenBuffer& operator=(const TokenBuffer&) = delete;
    ~TokenBuffer();

    const Unit* text() const { return tokenText; }
    std::size_t length() const { return tokenLen; }
    Unit last() const { return tokenText[tokenLen - 1]; }

    void clear() { tokenLen = 0; }
    // Cuts the text off at a shorter length.
    void shorten_to(std::size_t length) { tokenLen = length; }

    void append_unit(Unit unit) {
        if (tokenLen == tokenCap) grow();
        tokenText[tokenLen++] = unit;
    }

    void append_all(const Unit* units, std::size_t count) {
        while (tokenCap - tokenLen < count) grow();
        std::memcpy(tokenText + tokenLen, units, count * sizeof(Unit));
        tokenLen += count;
    }

    // Appends a character, one above U+FFFF as a surrogate pair.
    void append_char(int c) {
        if (c > 0xFFFF) {
            append_pair(c);
        } else {
            append_unit(static_cast<Unit>(c));
        }
    }

    // Appends what `fill` stores: it is given a place and the number of units that fit there, at
    // least one, and returns how many it has stored.
    template <typename Fill>
    void append_by(Fill fill) {
        if (tokenLen == tokenCap) grow();
        tokenLen += fill(tokenText + tokenLen, tokenCap - tokenLen);
    }

    // Whether the text ends in these units.
    bool ends_in(char before, char lastUnit) const {
        return tokenLen >= 2 && tokenText[tokenLen - 1] == lastUnit &&
               tokenText[tokenLen - 2] == before;
    }
    bool ends_in(char before, char middle, char lastUnit) const {
        return tokenLen >= 3 && ends_in(middle, lastUnit) && tokenText[tokenLen - 3] == before;
    }

    // Whether these two units stand in front of the last.
    bool has_before_last(char first, char second) const {
        return tokenLen >= 3 && tokenText[tokenLen - 2] == second &&
               tokenText[tokenLen - 3] == first;
    }

    // Ends the text with a NUL at its present length and returns it.
    Unit* terminate() {
        tokenText[tokenLen] = 0;
        return tokenText;
    }

private:
    void grow();
    void append_pair(int c);

    Unit* tokenText;       // with room for a NUL behind the capacity
    std::size_t tokenLen;  // units in use
    std::size_t tokenCap;  // units that fit
};

}  // namespace qvox

// Characters in 16-bit units and in UTF-8.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "units.h"

// Takes one character, or half of a surrogate pair without the other, from the front of the units.
inline char32_t next_character(const unsigned short*& unit, const unsigned short* end) {
    const char32_t first = *unit++;
    const bool isPair =
        first >= 0xD800 && first <= 0xDBFF && unit != end && *unit >= 0xDC00 && *unit <= 0xDFFF;
    return isPair ? 0x10000 + ((first - 0xD800) << 10) + (*unit++ - 0xDC00U) : first;
}

inline Units units_of(char32_t character) {
    if (character < 0x10000) return Units(1, static_cast<unsigned short>(character));
    const char32_t offset = character - 0x10000;
    return {static_cast<unsigned short>(0xD800 + (offset >> 10)),
            static_cast<unsigned short>(0xDC00 + (offset & 0x3FF))};
}

inline bool is_surrogate(char32_t character) { return character >= 0xD800 && character <= 0xDFFF; }

inline void append_utf8(std::string& out, char32_t character) {
    const auto append = [&out](char32_t byte) { out += static_cast<char>(byte); };
    if (character < 0x80) {
        append(character);
        return;
    }
    if (character < 0x800) {
        append(0xC0 | character >> 6);
    } else {
        if (character < 0x10000) {
            append(0xE0 | character >> 12);
        } else {
            append(0xF0 | character >> 18);
            append(0x80 | (character >> 12 & 0x3F));
        }
        append(0x80 | (character >> 6 & 0x3F));
    }
    append(0x80 | (character & 0x3F));
}

// The number of bytes of the character in front, which is put into `character`; 0 where the bytes
// are no UTF-8.
std::size_t decode_utf8(std::string_view bytes, char32_t& character);

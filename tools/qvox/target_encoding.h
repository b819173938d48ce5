// The encodings that `qvox convert` writes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "units.h"

struct TargetEncoding {
    const char* name;
    // What stands in front of a document.
    std::string_view mark;
    // The parsers take a document for UTF-8 that neither names it nor has a byte order mark.
    bool mustBeDeclared;
    // What is said of characters that it doesn't take.
    const char* lack;
    // Whether the character can be written and read as itself.
    bool (*takes)(char32_t character);
    // Whether a character that other systems use for the same Japanese punctuation is written as
    // the one that the encoding has: U+301C as U+FF5E.
    bool joinsVariants;
    // Appends the bytes of a text without half pairs at its ends.
    void (*encode)(const Units& text, std::string& bytes);
};

// The names of the encodings, with a separator.
std::string target_encoding_names(const char* separator = ", ");

// By one of its names, in any case; null for another. The names that people type are known beside
// the registered ones.
const TargetEncoding* target_encoding(const std::string& name);

// The character as which such a variant is read again; any other is itself.
inline unsigned short joined_variant(unsigned short character) {
    switch (character) {
        case 0x00A2: return 0xFFE0;
        case 0x00A3: return 0xFFE1;
        case 0x00AC: return 0xFFE2;
        case 0x2014: return 0x2015;
        case 0x2016: return 0x2225;
        case 0x2212: return 0xFF0D;
        case 0x301C: return 0xFF5E;
        default: return character;
    }
}

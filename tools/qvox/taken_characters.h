// The characters that an encoding takes, each asked for once.
#pragma once

#include <cstddef>
#include <vector>

#include "target_encoding.h"
#include "units.h"

class TakenCharacters {
public:
    explicit TakenCharacters(const TargetEncoding& target)
        : encoding(target), known(0x10000, UNKNOWN) {}

    bool operator()(char32_t character) {
        if (character >= known.size()) return encoding.takes(character);
        Knowledge& knowledge = known[character];
        if (knowledge == UNKNOWN) knowledge = encoding.takes(character) ? TAKEN : REFUSED;
        return knowledge == TAKEN;
    }

    // How much of the text in front is taken, in units.
    std::size_t lengthIn(UnitView text) {
        std::size_t length = 0;
        while (length < text.size() && (*this)(text[length])) ++length;
        return length;
    }

private:
    enum Knowledge : char { UNKNOWN, TAKEN, REFUSED };

    const TargetEncoding& encoding;
    std::vector<Knowledge> known;  // of each unit; no encoding takes half a pair
};

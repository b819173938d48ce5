// The ranges of the character classes of XML 1.0, Appendix B (first to fourth edition), in
// ascending order. char_classes.h looks them up.
#pragma once

#include <cstdint>

namespace qvox {

// `first` to `last`, both included; `first` alone where `last` is 0.
struct CharRange {
    std::uint32_t first;
    std::uint32_t last;
};

extern const CharRange baseCharTable[202];
extern const CharRange ideographicTable[3];
extern const CharRange digitTable[15];
extern const CharRange combiningCharTable[95];
extern const CharRange extenderTable[11];

}  // namespace qvox

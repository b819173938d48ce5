// What the operations on lanes are made of everywhere: how many there are, and bits.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(_MSC_VER)
#include <intrin.h>
#endif

namespace qvox::lanes {

inline constexpr std::size_t UNITS = 8;
inline constexpr std::size_t BYTES = 16;

// The number of the lowest bit that is set, of one at least.
inline unsigned lowest_bit(std::uint64_t bits) {
#if defined(_MSC_VER)
    unsigned long number = 0;
    _BitScanForward64(&number, bits);
    return number;
#else
    return static_cast<unsigned>(__builtin_ctzll(bits));
#endif
}

}  // namespace qvox::lanes

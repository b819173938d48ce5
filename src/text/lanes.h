// Eight units, or sixteen bytes, looked at in one go: the few operations that the loops over text
// are made of, with SSE2, with NEON, and in plain C++ for everything else and for those who define
// QVOX_NO_SIMD. All three give the same results.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "text/lanes_base.h"
#include "text/wide.h"

#if !defined(QVOX_NO_SIMD) && (defined(__SSE2__) || defined(_M_X64))
#include "text/lanes_sse2.h"
#elif !defined(QVOX_NO_SIMD) && defined(__AARCH64EL__) && defined(__ARM_NEON)
#include "text/lanes_neon.h"
#else
#include "text/lanes_plain.h"
#endif

namespace qvox::lanes {

// The bits of so many lanes, the first ones.
inline std::uint64_t lowest(std::size_t count) {
    const std::size_t size = count * BITS_PER_LANE;
    return size == 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << size) - 1;
}

inline std::size_t first_lane(std::uint64_t bitsOfMatch) {
    return lowest_bit(bitsOfMatch) / BITS_PER_LANE;
}

// Wraps around at both ends.
inline Units8 plus(const Units8& units, int addend) {
    return sum(units, all(static_cast<Unit>(addend)));
}

// The lanes that don't match.
inline Match unmatched(const Match& match) { return except(all(0xFFFF), match); }

// join_triples(bytes, &units) joins eight sequences of three bytes, as UTF-8 has them, to units,
// and returns for how many of them, from the first on, the bytes are marked as such sequences have
// it. Looks at TRIPLES_READ bytes.
inline constexpr std::size_t TRIPLES_READ = 3 * UNITS + 2;

// The bits of the sixteen units at a place that are one of the ASCII characters.
template <char stop, char... otherStops>
inline std::uint64_t bits_of_any(const Unit* units) {
    const Bytes16 bytes = narrowed(units);
    Bytes16 match = equal_bytes(bytes, stop);
    ((match = either_byte(match, equal_bytes(bytes, otherStops))), ...);
    return bits_of_bytes(match);
}

// The first of the units that is one of the ASCII characters, or `end`. Looks at up to fifteen
// units behind the end.
template <char... stops>
inline const Unit* find_any(const Unit* next, const Unit* end) {
    for (; next < end; next += BYTES) {
        const std::uint64_t found = bits_of_any<stops...>(next);
        if (found == 0) continue;
        next += lowest_bit(found) / BITS_PER_BYTE;
        return next < end ? next : end;
    }
    return end;
}

// The same, and looks at the units only.
template <char... stops>
inline const Unit* find_any_within(const Unit* next, const Unit* end) {
    for (; static_cast<std::size_t>(end - next) >= BYTES; next += BYTES) {
        const std::uint64_t found = bits_of_any<stops...>(next);
        if (found != 0) return next + lowest_bit(found) / BITS_PER_BYTE;
    }
    constexpr std::uint64_t set = (... | (std::uint64_t{1} << stops));  // all are below 64
    while (next != end && (*next >= 64 || (set >> *next & 1) == 0)) ++next;
    return next;
}

// The same in units that may be changed.
template <char... stops>
inline Unit* find_any(Unit* next, const Unit* end) {
    return next + (find_any<stops...>(static_cast<const Unit*>(next), end) - next);
}

// The place behind the last unit that is the ASCII character, or `next` where none is. Looks at the
// units only.
inline const Unit* behind_last(const Unit* next, const Unit* end, char ascii) {
    while (static_cast<std::size_t>(end - next) >= BYTES &&
           bits_of_bytes(equal_bytes(narrowed(end - BYTES), ascii)) == 0) {
        end -= BYTES;
    }
    while (end != next && end[-1] != static_cast<Unit>(ascii)) --end;
    return end;
}

// How many of the units are the ASCII character. Looks at the units only.
inline std::size_t count_of(const Unit* next, const Unit* end, char ascii) {
    constexpr std::size_t MOST_ROUNDS = 255;
    std::size_t count = 0;
    while (static_cast<std::size_t>(end - next) >= BYTES) {
        std::size_t rounds = static_cast<std::size_t>(end - next) / BYTES;
        if (rounds > MOST_ROUNDS) rounds = MOST_ROUNDS;
        Bytes16 sums = {};
        for (; rounds != 0; --rounds, next += BYTES) {
            sums = counted_bytes(sums, equal_bytes(narrowed(next), ascii));
        }
        count += total(sums);
    }
    for (; next != end; ++next) count += *next == static_cast<Unit>(ascii) ? 1 : 0;
    return count;
}

// How many of the units match. Looks at the units only.
template <typename Matches>
inline std::size_t count_if(const Unit* next, const Unit* end, Matches matches) {
    constexpr std::size_t MOST_ROUNDS = 65535;
    std::size_t count = 0;
    while (static_cast<std::size_t>(end - next) >= UNITS) {
        std::size_t rounds = static_cast<std::size_t>(end - next) / UNITS;
        if (rounds > MOST_ROUNDS) rounds = MOST_ROUNDS;
        Match sums = masked(load(next), 0);
        for (; rounds != 0; --rounds, next += UNITS) sums = counted(sums, matches(load(next)));
        Unit lane[UNITS];
        store(lane, sums);
        for (const Unit sum : lane) count += sum;
    }
    if (next == end) return count;
    Unit rest[UNITS] = {};
    const auto size = static_cast<std::size_t>(end - next);
    std::memcpy(rest, next, size * sizeof(Unit));
    const std::uint64_t found = bits(matches(load(rest)));
    for (std::size_t i = 0; i < size; ++i) count += found >> (i * BITS_PER_LANE) & 1U;
    return count;
}

}  // namespace qvox::lanes

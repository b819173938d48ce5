// The operations on lanes with SSE2; text/lanes.h chooses.
#pragma once

#include <emmintrin.h>

#include "text/lanes_base.h"
#include "text/wide.h"

namespace qvox::lanes {

using Units8 = __m128i;
using Match = __m128i;  // all bits of a lane that matches, none of the others

inline Units8 load(const Unit* units) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(units));
}
inline Units8 load_units(const unsigned char* bytes) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}
inline void store(Unit* to, Units8 units) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), units);
}
inline Units8 all(Unit unit) { return _mm_set1_epi16(static_cast<short>(unit)); }
inline Units8 swapped(Units8 units) {
    return _mm_or_si128(_mm_slli_epi16(units, 8), _mm_srli_epi16(units, 8));
}
inline Units8 masked(Units8 units, Unit mask) { return _mm_and_si128(units, all(mask)); }
inline Match equal(Units8 units, Unit unit) { return _mm_cmpeq_epi16(units, all(unit)); }
inline Match equal(Units8 a, Units8 b) { return _mm_cmpeq_epi16(a, b); }
inline Match up_to(Units8 units, Unit largest) {
    return _mm_cmpeq_epi16(_mm_subs_epu16(units, all(largest)), _mm_setzero_si128());
}
inline Match from(Units8 units, Unit smallest) {
    return _mm_cmpeq_epi16(_mm_subs_epu16(all(smallest), units), _mm_setzero_si128());
}
inline Match either(Match a, Match b) { return _mm_or_si128(a, b); }
inline Match both(Match a, Match b) { return _mm_and_si128(a, b); }
inline Match except(Match a, Match b) { return _mm_andnot_si128(b, a); }
inline Units8 flipped(Units8 units, Unit mask) { return _mm_xor_si128(units, all(mask)); }
inline Units8 high_bytes(Units8 units) { return _mm_srli_epi16(units, 8); }
inline Units8 halved(Units8 units) { return _mm_srli_epi16(units, 1); }
inline Units8 sum(Units8 a, Units8 b) { return _mm_add_epi16(a, b); }
inline Units8 times(Units8 units, Unit factor) { return _mm_mullo_epi16(units, all(factor)); }
inline Units8 looked_up(const Unit* table, Units8 indices) {
    const auto four = [table](__m128i some) {
        std::uint64_t index = 0;
        _mm_storel_epi64(reinterpret_cast<__m128i*>(&index), some);
        const auto at = [table, index](unsigned lane) {
            return std::uint64_t{table[index >> 16 * lane & 0xFFFF]} << 16 * lane;
        };
        return static_cast<long long>((at(0) | at(1)) | (at(2) | at(3)));
    };
    return _mm_set_epi64x(four(_mm_unpackhi_epi64(indices, indices)), four(indices));
}
inline std::uint64_t bits(Match match) { return static_cast<unsigned>(_mm_movemask_epi8(match)); }
inline constexpr unsigned BITS_PER_LANE = 2;

// A sum for each lane of how often it matched, up to 65,535.
inline Match counted(Match sums, Match match) { return _mm_sub_epi16(sums, match); }

using Bytes16 = __m128i;

inline Bytes16 load(const unsigned char* bytes) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}
// The bytes that aren't ASCII, or controls other than tab and LF: a bit each.
inline std::uint64_t unusual(Bytes16 bytes) {
    // As signed numbers those above ASCII are the smallest.
    const __m128i outside = _mm_cmplt_epi8(bytes, _mm_set1_epi8(' '));
    const __m128i allowed = _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\t')),
                                         _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\n')));
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_andnot_si128(allowed, outside)));
}
inline constexpr unsigned BITS_PER_BYTE = 1;
// Sixteen units as bytes: ASCII as itself, and what isn't in ASCII isn't there either.
inline Bytes16 narrowed(const Unit* units) {
    return _mm_packus_epi16(load(units), load(units + UNITS));
}
inline Bytes16 equal_bytes(Bytes16 bytes, char ascii) {
    return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(ascii));
}
inline Bytes16 either_byte(Bytes16 a, Bytes16 b) { return _mm_or_si128(a, b); }
inline std::uint64_t bits_of_bytes(Bytes16 match) {
    return static_cast<unsigned>(_mm_movemask_epi8(match));
}
// A sum for each byte of how often it matched, up to 255, and the sum of these.
inline Bytes16 counted_bytes(Bytes16 sums, Bytes16 match) { return _mm_sub_epi8(sums, match); }
inline std::size_t total(Bytes16 sums) {
    const __m128i halves = _mm_sad_epu8(sums, _mm_setzero_si128());
    const auto low = static_cast<unsigned>(_mm_cvtsi128_si32(halves));
    return low + static_cast<unsigned>(_mm_cvtsi128_si32(_mm_srli_si128(halves, 8)));
}
// Two characters of three bytes in the first 48 bits of each half, as two units in the first 32.
inline __m128i joined_triples(__m128i halves) {
    const auto masked64 = [](__m128i bits, long long mask) {
        return _mm_and_si128(bits, _mm_set1_epi64x(mask));
    };
    const __m128i first = masked64(_mm_slli_epi64(halves, 12), 0xF00000F000);
    const __m128i middle = masked64(_mm_srli_epi64(halves, 2), 0xFC0000FC0);
    const __m128i last = masked64(_mm_srli_epi64(halves, 16), 0x3F00003F);
    const __m128i apart = _mm_or_si128(_mm_or_si128(first, middle), last);
    return _mm_or_si128(masked64(apart, 0xFFFF), masked64(_mm_srli_epi64(apart, 8), 0xFFFF0000));
}
inline std::size_t join_triples(const unsigned char* bytes, Units8* units) {
    const auto two = [bytes](std::size_t place) {
        return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(bytes + place));
    };
    const __m128i low = _mm_unpacklo_epi64(two(0), two(6));
    const __m128i high = _mm_unpacklo_epi64(two(12), two(18));
    const __m128i marks = _mm_set1_epi64x(0xC0C0F0C0C0F0);
    const __m128i wanted = _mm_set1_epi64x(0x8080E08080E0);
    const auto right = [marks, wanted](__m128i halves) {
        const __m128i marked = _mm_cmpeq_epi8(_mm_and_si128(halves, marks), wanted);
        return static_cast<unsigned>(_mm_movemask_epi8(marked));
    };
    *units = _mm_castps_si128(_mm_shuffle_ps(_mm_castsi128_ps(joined_triples(low)),
                                             _mm_castsi128_ps(joined_triples(high)),
                                             _MM_SHUFFLE(2, 0, 2, 0)));
    const std::uint64_t wrong = ~(std::uint64_t{right(high)} << 16 | right(low)) & 0xFFFFFFFF;
    if (wrong == 0) return UNITS;
    const std::size_t byte = lowest_bit(wrong);  // of the 32 that were loaded, six of each eight
    return byte / 8 * 2 + byte % 8 / 3;
}
inline void widen(Unit* to, Bytes16 bytes) {
    store(to, _mm_unpacklo_epi8(bytes, _mm_setzero_si128()));
    store(to + UNITS, _mm_unpackhi_epi8(bytes, _mm_setzero_si128()));
}

}  // namespace qvox::lanes

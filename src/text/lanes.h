// Eight units, or sixteen bytes, looked at in one go: the few operations that the loops over text
// are made of, with SSE2, with NEON, and in plain C++ for everything else and for those who define
// QVOX_NO_SIMD. All three give the same results.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "text/wide.h"

#if !defined(QVOX_NO_SIMD) && (defined(__SSE2__) || defined(_M_X64))
#define QVOX_SSE2
#include <emmintrin.h>
#elif !defined(QVOX_NO_SIMD) && defined(__AARCH64EL__) && defined(__ARM_NEON)
#define QVOX_NEON
#include <arm_neon.h>
#endif
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

#if defined(QVOX_SSE2)

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

#elif defined(QVOX_NEON)

using Units8 = uint16x8_t;
using Match = uint16x8_t;

inline Units8 load(const Unit* units) { return vld1q_u16(units); }
inline Units8 load_units(const unsigned char* bytes) {
    return vreinterpretq_u16_u8(vld1q_u8(bytes));
}
inline void store(Unit* to, Units8 units) { vst1q_u16(to, units); }
inline Units8 swapped(Units8 units) {
    return vreinterpretq_u16_u8(vrev16q_u8(vreinterpretq_u8_u16(units)));
}
inline Units8 masked(Units8 units, Unit mask) { return vandq_u16(units, vdupq_n_u16(mask)); }
inline Match equal(Units8 units, Unit unit) { return vceqq_u16(units, vdupq_n_u16(unit)); }
inline Match equal(Units8 a, Units8 b) { return vceqq_u16(a, b); }
inline Match up_to(Units8 units, Unit largest) { return vcleq_u16(units, vdupq_n_u16(largest)); }
inline Match from(Units8 units, Unit smallest) { return vcgeq_u16(units, vdupq_n_u16(smallest)); }
inline Match either(Match a, Match b) { return vorrq_u16(a, b); }
inline Match both(Match a, Match b) { return vandq_u16(a, b); }
inline Match except(Match a, Match b) { return vbicq_u16(a, b); }
inline Units8 all(Unit unit) { return vdupq_n_u16(unit); }
inline Units8 flipped(Units8 units, Unit mask) { return veorq_u16(units, all(mask)); }
inline Units8 high_bytes(Units8 units) { return vshrq_n_u16(units, 8); }
inline Units8 halved(Units8 units) { return vshrq_n_u16(units, 1); }
inline Units8 sum(Units8 a, Units8 b) { return vaddq_u16(a, b); }
inline Units8 times(Units8 units, Unit factor) { return vmulq_n_u16(units, factor); }
inline Units8 looked_up(const Unit* table, Units8 indices) {
    Unit lane[UNITS];
    vst1q_u16(lane, indices);
    for (Unit& one : lane) one = table[one];
    return vld1q_u16(lane);
}
inline std::uint64_t bits(Match match) {
    return vget_lane_u64(vreinterpret_u64_u8(vshrn_n_u16(match, 4)), 0);
}
inline constexpr unsigned BITS_PER_LANE = 8;
inline Match counted(Match sums, Match match) { return vsubq_u16(sums, match); }

using Bytes16 = uint8x16_t;

inline Bytes16 load(const unsigned char* bytes) { return vld1q_u8(bytes); }
inline std::uint64_t unusual(Bytes16 bytes) {
    const uint8x16_t allowed =
        vorrq_u8(vceqq_u8(bytes, vdupq_n_u8('\t')), vceqq_u8(bytes, vdupq_n_u8('\n')));
    const uint8x16_t controls = vbicq_u8(vcleq_u8(bytes, vdupq_n_u8(0x1F)), allowed);
    const uint8x16_t found = vorrq_u8(controls, vcgeq_u8(bytes, vdupq_n_u8(0x80)));
    return vget_lane_u64(vreinterpret_u64_u8(vshrn_n_u16(vreinterpretq_u16_u8(found), 4)), 0);
}
inline constexpr unsigned BITS_PER_BYTE = 4;
inline Bytes16 narrowed(const Unit* units) {
    return vcombine_u8(vqmovn_u16(vld1q_u16(units)), vqmovn_u16(vld1q_u16(units + UNITS)));
}
inline Bytes16 equal_bytes(Bytes16 bytes, char ascii) {
    return vceqq_u8(bytes, vdupq_n_u8(static_cast<unsigned char>(ascii)));
}
inline Bytes16 either_byte(Bytes16 a, Bytes16 b) { return vorrq_u8(a, b); }
inline std::uint64_t bits_of_bytes(Bytes16 match) {
    return vget_lane_u64(vreinterpret_u64_u8(vshrn_n_u16(vreinterpretq_u16_u8(match), 4)), 0);
}
inline Bytes16 counted_bytes(Bytes16 sums, Bytes16 match) { return vsubq_u8(sums, match); }
inline std::size_t total(Bytes16 sums) { return vaddlvq_u8(sums); }
inline std::size_t join_triples(const unsigned char* bytes, Units8* units) {
    const uint8x8x3_t parts = vld3_u8(bytes);
    const auto marked = [](uint8x8_t part, std::uint8_t marks, std::uint8_t wanted) {
        return vceq_u8(vand_u8(part, vdup_n_u8(marks)), vdup_n_u8(wanted));
    };
    const uint8x8_t right =
        vand_u8(marked(parts.val[0], 0xF0, 0xE0),
                vand_u8(marked(parts.val[1], 0xC0, 0x80), marked(parts.val[2], 0xC0, 0x80)));
    const auto bits_of = [](uint8x8_t part) { return vmovl_u8(vand_u8(part, vdup_n_u8(0x3F))); };
    *units = vorrq_u16(vshlq_n_u16(vmovl_u8(parts.val[0]), 12),
                       vorrq_u16(vshlq_n_u16(bits_of(parts.val[1]), 6), bits_of(parts.val[2])));
    const std::uint64_t wrong = ~vget_lane_u64(vreinterpret_u64_u8(right), 0);
    return wrong == 0 ? UNITS : lowest_bit(wrong) / 8;
}
inline void widen(Unit* to, Bytes16 bytes) {
    vst1q_u16(to, vmovl_u8(vget_low_u8(bytes)));
    vst1q_u16(to + UNITS, vmovl_u8(vget_high_u8(bytes)));
}

#else

struct Units8 {
    Unit lane[UNITS];
};
using Match = Units8;

inline Units8 load(const Unit* units) {
    Units8 loaded;
    std::memcpy(&loaded, units, sizeof loaded);
    return loaded;
}
// The first byte of a unit is its low one.
inline Units8 load_units(const unsigned char* bytes) {
    Units8 loaded;
    for (std::size_t i = 0; i < UNITS; ++i) {
        loaded.lane[i] = static_cast<Unit>(bytes[2 * i + 1] << 8 | bytes[2 * i]);
    }
    return loaded;
}
inline void store(Unit* to, const Units8& units) { std::memcpy(to, &units, sizeof units); }
template <typename Operation>
inline Units8 each(const Units8& units, Operation operation) {
    Units8 result;
    for (std::size_t i = 0; i < UNITS; ++i) {
        result.lane[i] = static_cast<Unit>(operation(units.lane[i]));
    }
    return result;
}
inline Unit lane_of(bool matches) { return matches ? Unit{0xFFFF} : Unit{0}; }
inline Units8 swapped(const Units8& units) {
    return each(units, [](Unit u) { return u << 8 | u >> 8; });
}
inline Units8 masked(const Units8& units, Unit mask) {
    return each(units, [mask](Unit u) { return u & mask; });
}
inline Match equal(const Units8& units, Unit unit) {
    return each(units, [unit](Unit u) { return lane_of(u == unit); });
}
inline Match equal(Units8 a, const Units8& b) {
    for (std::size_t i = 0; i < UNITS; ++i) a.lane[i] = lane_of(a.lane[i] == b.lane[i]);
    return a;
}
inline Match up_to(const Units8& units, Unit largest) {
    return each(units, [largest](Unit u) { return lane_of(u <= largest); });
}
inline Match from(const Units8& units, Unit smallest) {
    return each(units, [smallest](Unit u) { return lane_of(u >= smallest); });
}
inline Match either(Match a, const Match& b) {
    for (std::size_t i = 0; i < UNITS; ++i) a.lane[i] |= b.lane[i];
    return a;
}
inline Match both(Match a, const Match& b) {
    for (std::size_t i = 0; i < UNITS; ++i) a.lane[i] &= b.lane[i];
    return a;
}
inline Units8 all(Unit unit) {
    return each(Units8(), [unit](Unit) { return unit; });
}
inline Units8 flipped(const Units8& units, Unit mask) {
    return each(units, [mask](Unit u) { return u ^ mask; });
}
inline Units8 high_bytes(const Units8& units) {
    return each(units, [](Unit u) { return u >> 8; });
}
inline Units8 halved(const Units8& units) {
    return each(units, [](Unit u) { return u >> 1; });
}
inline Units8 sum(Units8 a, const Units8& b) {
    for (std::size_t i = 0; i < UNITS; ++i) a.lane[i] = static_cast<Unit>(a.lane[i] + b.lane[i]);
    return a;
}
inline Units8 times(const Units8& units, Unit factor) {
    return each(units, [factor](Unit u) { return unsigned{u} * factor; });
}
inline Units8 looked_up(const Unit* table, const Units8& indices) {
    return each(indices, [table](Unit index) { return table[index]; });
}
inline Match except(Match a, const Match& b) {
    for (std::size_t i = 0; i < UNITS; ++i) a.lane[i] = static_cast<Unit>(a.lane[i] & ~b.lane[i]);
    return a;
}
inline std::uint64_t bits(const Match& match) {
    std::uint64_t result = 0;
    for (std::size_t i = 0; i < UNITS; ++i) result |= std::uint64_t{match.lane[i] & 1U} << i;
    return result;
}
inline constexpr unsigned BITS_PER_LANE = 1;
inline Match counted(Match sums, const Match& match) {
    for (std::size_t i = 0; i < UNITS; ++i) {
        sums.lane[i] = static_cast<Unit>(sums.lane[i] - match.lane[i]);
    }
    return sums;
}

struct Bytes16 {
    unsigned char lane[BYTES];
};

inline Bytes16 load(const unsigned char* bytes) {
    Bytes16 loaded;
    std::memcpy(&loaded, bytes, sizeof loaded);
    return loaded;
}
inline std::uint64_t unusual(const Bytes16& bytes) {
    std::uint64_t result = 0;
    for (std::size_t i = 0; i < BYTES; ++i) {
        const unsigned char c = bytes.lane[i];
        const bool isUsual = c < 0x20 ? c == '\t' || c == '\n' : c < 0x80;
        result |= std::uint64_t{isUsual ? 0U : 1U} << i;
    }
    return result;
}
inline constexpr unsigned BITS_PER_BYTE = 1;
inline Bytes16 narrowed(const Unit* units) {
    Bytes16 bytes;
    for (std::size_t i = 0; i < BYTES; ++i) {
        bytes.lane[i] = static_cast<unsigned char>(units[i] < 0xFF ? units[i] : 0xFF);
    }
    return bytes;
}
inline Bytes16 equal_bytes(const Bytes16& bytes, char ascii) {
    Bytes16 match;
    for (std::size_t i = 0; i < BYTES; ++i) {
        match.lane[i] = bytes.lane[i] == static_cast<unsigned char>(ascii) ? 0xFF : 0;
    }
    return match;
}
inline Bytes16 either_byte(Bytes16 a, const Bytes16& b) {
    for (std::size_t i = 0; i < BYTES; ++i) a.lane[i] |= b.lane[i];
    return a;
}
inline std::uint64_t bits_of_bytes(const Bytes16& match) {
    std::uint64_t result = 0;
    for (std::size_t i = 0; i < BYTES; ++i) result |= std::uint64_t{match.lane[i] & 1U} << i;
    return result;
}
inline Bytes16 counted_bytes(Bytes16 sums, const Bytes16& match) {
    for (std::size_t i = 0; i < BYTES; ++i) {
        sums.lane[i] = static_cast<unsigned char>(sums.lane[i] - match.lane[i]);
    }
    return sums;
}
inline std::size_t total(const Bytes16& sums) {
    std::size_t result = 0;
    for (const unsigned char sum : sums.lane) result += sum;
    return result;
}
inline std::size_t join_triples(const unsigned char* bytes, Units8* units) {
    std::size_t count = 0;
    for (; count < UNITS; ++count, bytes += 3) {
        const bool isRight =
            (bytes[0] & 0xF0) == 0xE0 && (bytes[1] & 0xC0) == 0x80 && (bytes[2] & 0xC0) == 0x80;
        if (!isRight) break;
        units->lane[count] =
            static_cast<Unit>((bytes[0] & 0x0F) << 12 | (bytes[1] & 0x3F) << 6 | (bytes[2] & 0x3F));
    }
    return count;
}
inline void widen(Unit* to, const Bytes16& bytes) {
    for (std::size_t i = 0; i < BYTES; ++i) to[i] = bytes.lane[i];
}

#endif

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

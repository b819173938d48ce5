// The operations on lanes in plain C++, which are the definition; text/lanes.h chooses.
#pragma once

#include <cstring>

#include "text/lanes_base.h"
#include "text/wide.h"

namespace qvox::lanes {

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

}  // namespace qvox::lanes

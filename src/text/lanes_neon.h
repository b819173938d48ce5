// The operations on lanes with NEON; text/lanes.h chooses.
#pragma once

#include <arm_neon.h>

#include "text/lanes_base.h"
#include "text/wide.h"

namespace qvox::lanes {

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

}  // namespace qvox::lanes

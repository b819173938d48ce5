// The code page service: Shift_JIS as the Japanese code page 932 has it, with NEC's and IBM's
// extensions and the user-defined rows. One index into a constant table for each character; the
// tables are code_page_table, which make_code_page_table.py writes.
#pragma once

#include <iterator>

#include "platform/code_page_table.h"

namespace qvox {

// The unit of a single byte: ASCII and half-width kana, U+FF61 for 0xA1. 0 for any other value.
inline int code_page_single_to_unit(unsigned byte) {
    constexpr unsigned FIRST_KANA = 0xA1;
    constexpr unsigned LAST_KANA = 0xDF;
    if (byte < 0x80) return static_cast<int>(byte);
    if (byte < FIRST_KANA || byte > LAST_KANA) return 0;
    return static_cast<int>(byte - FIRST_KANA + 0xFF61);
}

// The unit of a double-byte character. 0 where the two are no character.
inline int code_page_pair_to_unit(unsigned lead, unsigned trail) {
    // 0x81 to 0x9F and 0xE0 to 0xFC: turning this bit over puts the second block behind the first.
    const unsigned row = (lead ^ 0x20) - 0xA1;
    const unsigned cell = trail - 0x40;
    if (row >= std::size(codePageUnits) || cell >= std::size(codePageUnits[0])) return 0;
    return codePageUnits[row][cell];
}

// The code of a unit, a byte or lead * 256 + trail. `?` for what the code page doesn't have.
inline int code_page_from_unit(unsigned unit) {
    if (unit > 0xFFFF) return '?';
    return codePages[codePageIndex[unit >> 8]][unit & 0xFF];
}

}  // namespace qvox

// Conversion of single characters between Unicode, Shift_JIS, EUC-JP and JIS. Shift_JIS is the
// pivot: the code page has its characters, and the others reach it by arithmetic.
//
// A code is a byte, or the first byte of a pair * 256 + the second. The bytes of a JIS pair are
// 0x21 to 0x7F, without escape sequences. Half-width kana are the byte 0xA1 to 0xDF in Shift_JIS
// and JIS, and in EUC-JP 0x8E and that byte. A conversion to Unicode gives 0 for what is no
// character; one from Unicode gives '?' for what the encoding doesn't have.
//
// native_text.h converts whole texts.
#pragma once

#include "platform/code_page.h"
#include "text/wide.h"

namespace qvox {

inline int sjis_to_unicode(int code) {
    const auto bits = static_cast<unsigned>(code);
    if (bits < 0x100) return code_page_single_to_unit(bits);
    return code_page_pair_to_unit(bits >> 8, bits & 0xFF);
}

inline bool is_half_width_kana_byte(int byte) { return byte >= 0xA1 && byte <= 0xDF; }

inline int unicode_to_sjis(int unit) { return code_page_from_unit(static_cast<unsigned>(unit)); }

// Arithmetic only: the bytes needn't be a character. sjis_to_euc leaves an ASCII byte as it is,
// euc_to_sjis takes pairs.
inline int euc_to_sjis(int code) {
    constexpr int KANA_LEAD = 0x8E;
    const int high = (code >> 8) & 0xFF;
    const int low = code & 0xFF;
    if (high == KANA_LEAD) return low;
    const int block = high < 0xDF ? 0x30 : 0x70;
    const bool isOdd = high % 2 != 0;
    const int trail = isOdd ? low - (low < 0xE0 ? 0x61 : 0x60) : low - 2;
    return ((high / 2 + block + (isOdd ? 1 : 0)) & 0xFF) << 8 | (trail & 0xFF);
}
int sjis_to_euc(int code);

// By the same arithmetic: 0 where it leads to no character of Shift_JIS, while a second byte below
// the usual range may well lead to one.
// Bytes that aren't EUC's are not looked for: Shift_JIS judges what the arithmetic makes of them.
inline int euc_to_unicode(int code) { return sjis_to_unicode(euc_to_sjis(code)); }
inline int jis_to_unicode(int code) {
    return is_half_width_kana_byte(code) ? sjis_to_unicode(code) : euc_to_unicode(code | 0x8080);
}

// The unit of a row and a cell of JIS, both below JIS_CELLS, where EUC-JP and JIS name them by
// bytes from 0xA1 and 0x21 on. 0 where there is none. Two rows are one of the code page.
inline constexpr unsigned JIS_CELLS = 94;          // of a row, and so many rows
inline constexpr unsigned JIS_ODD_ROW = 0x5F;      // where the second row begins
inline constexpr unsigned JIS_UNUSED_CELL = 0x3F;  // of the first, for the byte 0x7F
inline Unit jis_cell_to_unit(unsigned row, unsigned cell) {
    // Without a branch: which of the two rows comes next nobody can tell.
    const unsigned isOdd = row & 1U;
    const unsigned isBehindUnused = cell >= JIS_UNUSED_CELL ? 1 : 0;
    const unsigned column = cell + isOdd * JIS_ODD_ROW + ((isOdd ^ 1U) & isBehindUnused);
    return codePageUnits[row / 2][column];
}

// A character that Shift_JIS has in rows which the other two lack is taken from its second place in
// a lower row, where it has one.
int unicode_to_euc(int unit);
int unicode_to_jis(int unit);

}  // namespace qvox

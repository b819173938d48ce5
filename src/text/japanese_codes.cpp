#include "text/japanese_codes.h"

namespace qvox {

namespace {

constexpr int EUC_KANA_LEAD = 0x8E;

// From this code on Shift_JIS goes beyond row 95, the last that a first byte of EUC-JP or JIS can
// name. Row 95 is the first of the user-defined ones, U+E000 to U+E05D.
constexpr int FIRST_CODE_BEYOND_EUC = 0xF09F;

// Characters of IBM's extension that NEC's rows hold too, in the same order. The rest of it, which
// is in NEC's row 13 or in JIS X 0208, is written from there anyway.
struct ExtensionRun {
    int firstIbm;
    int lastIbm;
    int firstNec;
};

constexpr ExtensionRun extensionRuns[] = {
    {0xFA40, 0xFA49, 0xEEEF},  // small roman numerals
    {0xFA55, 0xFA57, 0xEEFA},  // broken bar, apostrophe, quotation mark, all full-width
    {0xFA5C, 0xFC4B, 0xED40},  // kanji
};

int high_byte(int code) { return (code >> 8) & 0xFF; }

int low_byte(int code) { return code & 0xFF; }

int pair_of(int high, int low) { return (high & 0xFF) * 256 + (low & 0xFF); }

// Trail bytes are 0x40 to 0xFC without 0x7F.
constexpr int CELLS = 188;

int cell_number(int code) {
    const int trail = low_byte(code);
    return high_byte(code) * CELLS + trail - (trail < 0x7F ? 0x40 : 0x41);
}

int code_of_cell(int number) {
    const int cell = number % CELLS;
    return pair_of(number / CELLS, cell + (cell < 0x7F - 0x40 ? 0x40 : 0x41));
}

int find_code_within_euc(int code) {
    for (const ExtensionRun& run : extensionRuns) {
        if (code < run.firstIbm || code > run.lastIbm) continue;
        return code_of_cell(cell_number(run.firstNec) + cell_number(code) -
                            cell_number(run.firstIbm));
    }
    return '?';
}

}  // namespace

int sjis_to_euc(int code) {
    if (code >= 0 && code < 0x80) return code;
    if (is_half_width_kana_byte(code)) return pair_of(EUC_KANA_LEAD, code);

    const int high = high_byte(code);
    const int low = low_byte(code);
    const bool isFirstBlock = high < 0xE0;
    if (low >= 0x9F) return pair_of(high * 2 - (isFirstBlock ? 0x60 : 0xE0), low + 2);
    return pair_of(high * 2 - (isFirstBlock ? 0x61 : 0xE1), low + (low >= 0x7F ? 0x60 : 0x61));
}

int unicode_to_euc(int unit) {
    const int code = unicode_to_sjis(unit);
    return sjis_to_euc(code < FIRST_CODE_BEYOND_EUC ? code : find_code_within_euc(code));
}

int unicode_to_jis(int unit) {
    const int code = unicode_to_sjis(unit);
    return is_half_width_kana_byte(code) ? code : unicode_to_euc(unit) & 0x7F7F;
}

}  // namespace qvox

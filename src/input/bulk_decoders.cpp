#include "input/bulk_decoders.h"

#include <algorithm>

#include "input/xml_char.h"
#include "platform/code_page.h"
#include "text/japanese_codes.h"
#include "text/lanes.h"

namespace qvox {

namespace {

constexpr int ESC = 0x1B;
constexpr Unit LAST_ASCII = 0x7F;

bool is_usual_control(int byte) { return byte == '\n' || byte == '\t'; }

// The loops below work on copies of the ends, which then stay in registers.

// CR LF, which is one LF.
bool is_line_end(const unsigned char* from, const unsigned char* end) {
    return end - from >= 2 && from[0] == '\r' && from[1] == '\n';
}

bool take_line_end(Stretch& s) {
    if (!is_line_end(s.from, s.fromEnd)) return false;
    s.from += 2;
    *s.to++ = '\n';
    return true;
}

// ASCII but for ESC and other controls, with line ends.
void take_ascii(Stretch& s) {
    const unsigned char* from = s.from;
    Unit* to = s.to;
    while (static_cast<std::size_t>(s.fromEnd - from) >= lanes::BYTES &&
           static_cast<std::size_t>(s.toEnd - to) >= lanes::BYTES) {
        const lanes::Bytes16 bytes = lanes::load(from);
        lanes::widen(to, bytes);
        const std::uint64_t unusual = lanes::unusual(bytes);
        if (unusual == 0) {
            from += lanes::BYTES;
            to += lanes::BYTES;
            continue;
        }
        const std::size_t count = lanes::lowest_bit(unusual) / lanes::BITS_PER_BYTE;
        from += count;
        to += count;
        if (!is_line_end(from, s.fromEnd)) {
            s.from = from;
            s.to = to;
            return;
        }
        from += 2;
        *to++ = '\n';
    }
    while (from != s.fromEnd && to != s.toEnd) {
        if (*from >= 0x80 || (*from < 0x20 && !is_usual_control(*from))) break;
        *to++ = *from++;
    }
    s.from = from;
    s.to = to;
}

// Units by eights, as long as all are usual. `join` makes units of the bytes at a place and returns
// how many of them are usual, from the first on. It looks at `bytesRead` bytes, and a unit takes
// `bytesOfUnit` of them.
template <std::size_t bytesOfUnit, std::size_t bytesRead, typename Join>
void take_eights(Stretch& s, Join join) {
    const unsigned char* from = s.from;
    Unit* to = s.to;
    std::size_t count = lanes::UNITS;
    while (count == lanes::UNITS && static_cast<std::size_t>(s.toEnd - to) >= lanes::UNITS &&
           static_cast<std::size_t>(s.fromEnd - from) >= bytesRead) {
        lanes::Units8 units = {};
        count = join(from, &units);
        lanes::store(to, units);
        from += bytesOfUnit * count;
        to += count;
    }
    s.from = from;
    s.to = to;
}

// The lanes in front of the first that matches.
std::size_t lanes_before(const lanes::Match& match) {
    const std::uint64_t found = lanes::bits(match);
    return found != 0 ? lanes::first_lane(found) : lanes::UNITS;
}

// Places in the code page, and which of them are any.
struct Cells {
    lanes::Units8 index;
    lanes::Match known;
};

constexpr unsigned ROWS = sizeof codePageUnits / sizeof codePageUnits[0];
constexpr unsigned CELLS_OF_ROW = sizeof codePageUnits[0] / sizeof codePageUnits[0][0];

// Characters of two bytes: `cells_of` gives the places of eight of them, whose first bytes are the
// low ones, `unit_of` the unit of one, or 0 where it isn't a usual one.
template <Cells (*cells_of)(const lanes::Units8& pairs), Unit (*unit_of)(unsigned, unsigned)>
bool take_pairs(Stretch& s) {
    const Unit* const before = s.to;
    take_eights<2, 2 * lanes::UNITS>(s, [](const unsigned char* from, lanes::Units8* units) {
        const Cells cells = cells_of(lanes::load_units(from));
        *units = lanes::looked_up(codePageUnits[0], lanes::both(cells.index, cells.known));
        return lanes_before(
            lanes::either(lanes::unmatched(cells.known), lanes::equal(*units, Unit{0})));
    });
    for (; s.fromEnd - s.from >= 2 && s.to != s.toEnd; s.from += 2) {
        const Unit unit = unit_of(s.from[0], s.from[1]);
        if (unit == 0) break;
        *s.to++ = unit;
    }
    return s.to != before;
}

// A half-width kana of one byte.
bool take_kana(Stretch& s) {
    if (!is_half_width_kana_byte(*s.from)) return false;
    *s.to++ = static_cast<Unit>(sjis_to_unicode(*s.from++));
    return true;
}

// The loop of the encodings that contain ASCII. `take_wide` takes characters from a byte above
// ASCII on, at least one, or is false.
template <typename TakeWide>
void decode_stretch(Stretch& s, TakeWide take_wide) {
    for (;;) {
        take_ascii(s);
        if (s.from == s.fromEnd || s.to == s.toEnd) return;
        if (!(*s.from < 0x80 ? take_line_end(s) : take_wide(s))) return;
    }
}

// Units that are no characters.
lanes::Match not_characters(const lanes::Units8& units) {
    using namespace lanes;
    return either(equal(masked(units, 0xF800), 0xD800), from(units, 0xFFFE));
}

std::size_t join_triples(const unsigned char* from, lanes::Units8* units) {
    const std::size_t count = lanes::join_triples(from, units);
    const lanes::Match unusual =
        lanes::either(not_characters(*units), lanes::up_to(*units, LAST_ASCII));
    return std::min(count, lanes_before(unusual));
}

// Sequences of three bytes, at least one.
bool take_utf8(Stretch& s) {
    constexpr unsigned MARKS =
        0xC0C0F0;  // the bits that say what a byte is, the first one's lowest
    constexpr unsigned LEAD_AND_CONTINUATIONS = 0x8080E0;
    constexpr unsigned FIRST_WIDE = 0x80;
    constexpr unsigned FIRST_SURROGATE = 0xD800;
    const Unit* const before = s.to;
    take_eights<3, lanes::TRIPLES_READ>(s, join_triples);
    const unsigned char* from = s.from;
    Unit* to = s.to;
    for (std::ptrdiff_t left = std::min((s.fromEnd - from) / 3, s.toEnd - to); left > 0; --left) {
        const auto bytes = static_cast<unsigned>(from[0] | from[1] << 8 | from[2] << 16);
        if ((bytes & MARKS) != LEAD_AND_CONTINUATIONS) break;
        const unsigned unit = (bytes << 12 & 0xF000) | (bytes >> 2 & 0x0FC0) | (bytes >> 16 & 0x3F);
        if (unit - FIRST_WIDE >= FIRST_SURROGATE - FIRST_WIDE && !is_xml_char(unit)) break;
        if (unit < FIRST_WIDE) break;
        *to++ = static_cast<Unit>(unit);
        from += 3;
    }
    s.from = from;
    s.to = to;
    return to != before;
}

void decode_utf8(Stretch& s) { decode_stretch(s, take_utf8); }

// As code_page_pair_to_unit does it.
Cells sjis_cells(const lanes::Units8& pairs) {
    using namespace lanes;
    const Units8 row = plus(flipped(masked(pairs, 0xFF), 0x20), -0xA1);
    const Units8 cell = plus(high_bytes(pairs), -0x40);
    return {sum(times(row, CELLS_OF_ROW), cell),
            both(up_to(row, ROWS - 1), up_to(cell, CELLS_OF_ROW - 1))};
}

Unit sjis_unit(unsigned lead, unsigned trail) {
    return static_cast<Unit>(code_page_pair_to_unit(lead, trail));
}

bool take_sjis(Stretch& s) { return take_kana(s) || take_pairs<sjis_cells, sjis_unit>(s); }

void decode_sjis(Stretch& s) { decode_stretch(s, take_sjis); }

// A row and a cell, of 94 each, by the bytes from `first` on that name them; as jis_cell_to_unit
// does it.
template <unsigned first>
Cells jis_cells(const lanes::Units8& pairs) {
    using namespace lanes;
    const Units8 row = plus(masked(pairs, 0xFF), -static_cast<int>(first));
    const Units8 cell = plus(high_bytes(pairs), -static_cast<int>(first));
    const Match isOdd = equal(masked(row, 1), Unit{1});
    const Match isBehindUnused = except(from(cell, JIS_UNUSED_CELL), isOdd);
    const Units8 shift = either(masked(isOdd, JIS_ODD_ROW), masked(isBehindUnused, 1));
    return {sum(times(halved(row), CELLS_OF_ROW), sum(cell, shift)),
            both(up_to(row, JIS_CELLS - 1), up_to(cell, JIS_CELLS - 1))};
}

template <unsigned first>
Unit jis_unit(unsigned high, unsigned low) {
    const unsigned row = high - first;
    const unsigned cell = low - first;
    return row < JIS_CELLS && cell < JIS_CELLS ? jis_cell_to_unit(row, cell) : Unit{0};
}

template <unsigned first>
bool take_jis_pairs(Stretch& s) {
    return take_pairs<jis_cells<first>, jis_unit<first>>(s);
}

// Pairs that only the arithmetic of the conversion makes characters of are left to it.
bool take_euc(Stretch& s) {
    constexpr int KANA_LEAD = 0x8E;
    if (*s.from == KANA_LEAD && s.fromEnd - s.from >= 2) {
        if (!is_half_width_kana_byte(s.from[1])) return false;
        *s.to++ = static_cast<Unit>(sjis_to_unicode(s.from[1]));
        s.from += 2;
        return true;
    }
    return take_jis_pairs<0xA1>(s);
}

void decode_euc(Stretch& s) { decode_stretch(s, take_euc); }

// ESC $ @ and ESC $ B enter kanji, only ESC ( J leaves.
bool take_escape_sequence(Stretch& s) {
    if (s.fromEnd - s.from < 3) return false;
    const bool isKnown = s.kanjiMode ? s.from[1] == '(' && s.from[2] == 'J'
                                     : s.from[1] == '$' && (s.from[2] == '@' || s.from[2] == 'B');
    if (!isKnown) return false;
    s.kanjiMode = !s.kanjiMode;
    s.from += 3;
    return true;
}

bool take_jis_ascii(Stretch& s) {
    take_ascii(s);
    if (s.from == s.fromEnd || s.to == s.toEnd || *s.from == ESC) return true;
    return *s.from < 0x80 ? take_line_end(s) : take_kana(s);
}

// A sequence belongs to the character behind it: without one it isn't taken.
void decode_jis(Stretch& s) {
    while (s.from != s.fromEnd && s.to != s.toEnd) {
        const Stretch before = s;
        if (*s.from == ESC && !take_escape_sequence(s)) return;
        bool goesOn = true;
        if (s.kanjiMode) {
            take_jis_pairs<0x21>(s);
        } else {
            goesOn = take_jis_ascii(s);
        }
        if (s.to == before.to) s = before;
        if (!goesOn || s.to == before.to) return;
    }
}

// The units that aren't usual.
lanes::Match unusual(const lanes::Units8& units) {
    using namespace lanes;
    const Match controls =
        except(up_to(units, 0x1F), either(equal(units, '\t'), equal(units, '\n')));
    return either(controls, not_characters(units));
}

template <bool isBigEndian>
int unit_at(const unsigned char* bytes) {
    return isBigEndian ? bytes[0] << 8 | bytes[1] : bytes[1] << 8 | bytes[0];
}

template <bool isBigEndian>
bool take_unit(Stretch& s) {
    const int unit = unit_at<isBigEndian>(s.from);
    if (unit == '\r') {
        if (s.fromEnd - s.from < 4 || unit_at<isBigEndian>(s.from + 2) != '\n') return false;
        s.from += 2;
    } else if (!is_xml_char(unit)) {
        return false;
    }
    s.from += 2;
    *s.to++ = static_cast<Unit>(unit == '\r' ? '\n' : unit);
    return true;
}

template <bool isBigEndian>
std::size_t usual_units(const unsigned char* from, lanes::Units8* units) {
    *units = lanes::load_units(from);
    if (isBigEndian) *units = lanes::swapped(*units);
    return lanes_before(unusual(*units));
}

template <bool isBigEndian>
void decode_utf16(Stretch& s) {
    while (s.fromEnd - s.from >= 2 && s.to != s.toEnd) {
        take_eights<2, 2 * lanes::UNITS>(s, usual_units<isBigEndian>);
        if (s.fromEnd - s.from < 2 || s.to == s.toEnd) return;
        if (!take_unit<isBigEndian>(s)) return;
    }
}

}  // namespace

BulkDecoder select_bulk_decoder(EncodingId encoding, ByteOrder byteOrder) {
    switch (encoding) {
        case UTF8: return decode_utf8;
        case UTF16: return byteOrder == BYTES_BIG_ENDIAN ? decode_utf16<true> : decode_utf16<false>;
        case SJIS: return decode_sjis;
        case EUC: return decode_euc;
        case JIS: return decode_jis;
    }
    return nullptr;
}

void copy_units(Stretch& s) {
    constexpr std::ptrdiff_t SOME = 4;
    const auto* next = reinterpret_cast<const Unit*>(s.from);
    while (s.toEnd - s.to >= SOME && next[0] != 0 && next[1] != 0 && next[2] != 0 && next[3] != 0) {
        s.to = std::copy_n(next, SOME, s.to);
        next += SOME;
    }
    for (; s.to != s.toEnd && *next != 0; ++next) *s.to++ = *next;
    s.from = reinterpret_cast<const unsigned char*>(next);
}

}  // namespace qvox

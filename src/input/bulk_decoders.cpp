#include "input/bulk_decoders.h"

#include <algorithm>

#include "input/xml_char.h"
#include "text/japanese_codes.h"
#include "text/lanes.h"

namespace qvox {

namespace {

constexpr int ESC = 0x1B;

// A character from 0x80 up: its unit, and its bytes. No bytes for one that isn't usual.
struct WideCharacter {
    int unit;
    int size;
};

constexpr WideCharacter NO_CHARACTER = {0, 0};

bool is_between(int byte, int first, int last) { return byte >= first && byte <= last; }

bool is_usual_control(int byte) { return byte == '\n' || byte == '\t'; }

// ASCII but for CR, ESC and other controls.
void take_ascii(Stretch& s) {
    while (static_cast<std::size_t>(s.fromEnd - s.from) >= lanes::BYTES) {
        const lanes::Bytes16 bytes = lanes::load(s.from);
        lanes::widen(s.to, bytes);
        const std::uint64_t unusual = lanes::unusual(bytes);
        std::size_t count =
            unusual != 0 ? lanes::lowest_bit(unusual) / lanes::BITS_PER_BYTE : lanes::BYTES;
        count = std::min(count, static_cast<std::size_t>(s.toEnd - s.to));
        s.from += count;
        s.to += count;
        if (count != lanes::BYTES) return;
    }
    while (s.from != s.fromEnd && s.to != s.toEnd) {
        if (*s.from >= 0x80 || (*s.from < 0x20 && !is_usual_control(*s.from))) return;
        *s.to++ = *s.from++;
    }
}

// CR LF is one LF.
bool take_line_end(Stretch& s) {
    if (s.fromEnd - s.from < 2 || s.from[0] != '\r' || s.from[1] != '\n') return false;
    s.from += 2;
    *s.to++ = '\n';
    return true;
}

// Characters from 0x80 up. `decode` gives the WideCharacter at the start of some bytes.
template <typename Decode>
bool take_wide(Stretch& s, Decode decode) {
    while (s.from != s.fromEnd && *s.from >= 0x80) {
        if (s.to == s.toEnd) return true;
        const WideCharacter c = decode(s.from, s.fromEnd - s.from);
        if (c.size == 0 || c.unit < 0x80 || !is_xml_char(c.unit)) return false;
        *s.to++ = static_cast<Unit>(c.unit);
        s.from += c.size;
    }
    return true;
}

// The loop of the encodings that contain ASCII.
template <typename Decode>
void decode_stretch(Stretch& s, Decode decode) {
    for (;;) {
        take_ascii(s);
        if (s.from == s.fromEnd || s.to == s.toEnd) return;
        if (!(*s.from < 0x80 ? take_line_end(s) : take_wide(s, decode))) return;
    }
}

bool is_continuation(int byte) { return (byte & 0xC0) == 0x80; }

void decode_utf8(Stretch& s) {
    decode_stretch(s, [](const unsigned char* bytes, std::ptrdiff_t count) {
        if (count < 3 || (bytes[0] & 0xF0) != 0xE0) return NO_CHARACTER;
        if (!is_continuation(bytes[1]) || !is_continuation(bytes[2])) return NO_CHARACTER;
        return WideCharacter{
            (bytes[0] & 0x0F) << 12 | (bytes[1] & 0x3F) << 6 | (bytes[2] & 0x3F), 3};
    });
}

void decode_sjis(Stretch& s) {
    decode_stretch(s, [](const unsigned char* bytes, std::ptrdiff_t count) {
        if (is_half_width_kana_byte(bytes[0])) return WideCharacter{sjis_to_unicode(bytes[0]), 1};
        if (count < 2) return NO_CHARACTER;
        return WideCharacter{sjis_to_unicode(bytes[0] << 8 | bytes[1]), 2};
    });
}

// Pairs that only the arithmetic of the conversion makes characters of are left to it.
void decode_euc(Stretch& s) {
    constexpr int KANA_LEAD = 0x8E;
    decode_stretch(s, [](const unsigned char* bytes, std::ptrdiff_t count) {
        if (count < 2) return NO_CHARACTER;
        if (bytes[0] == KANA_LEAD && is_half_width_kana_byte(bytes[1])) {
            return WideCharacter{sjis_to_unicode(bytes[1]), 2};
        }
        if (!is_between(bytes[0], 0xA1, 0xFE) || !is_between(bytes[1], 0xA1, 0xFE)) {
            return NO_CHARACTER;
        }
        return WideCharacter{euc_to_unicode(bytes[0] << 8 | bytes[1]), 2};
    });
}

// ESC $ @ and ESC $ B enter kanji, only ESC ( J leaves.
bool take_escape_sequence(Stretch& s) {
    if (s.fromEnd - s.from < 3) return false;
    const bool isKnown = s.kanjiMode
                             ? s.from[1] == '(' && s.from[2] == 'J'
                             : s.from[1] == '$' && (s.from[2] == '@' || s.from[2] == 'B');
    if (!isKnown) return false;
    s.kanjiMode = !s.kanjiMode;
    s.from += 3;
    return true;
}

// Pairs up to the next escape sequence.
bool take_kanji(Stretch& s) {
    while (s.from != s.fromEnd && *s.from != ESC) {
        if (s.to == s.toEnd) return true;
        if (s.fromEnd - s.from < 2) return false;
        if (!is_between(s.from[0], 0x21, 0x7E) || !is_between(s.from[1], 0x21, 0x7E)) return false;
        const int unit = euc_to_unicode((s.from[0] << 8 | s.from[1]) | 0x8080);
        if (unit < 0x80 || !is_xml_char(unit)) return false;
        *s.to++ = static_cast<Unit>(unit);
        s.from += 2;
    }
    return true;
}

bool take_jis_ascii(Stretch& s) {
    take_ascii(s);
    if (s.from == s.fromEnd || s.to == s.toEnd || *s.from == ESC) return true;
    if (*s.from < 0x80) return take_line_end(s);
    return take_wide(s, [](const unsigned char* bytes, std::ptrdiff_t) {
        return is_half_width_kana_byte(*bytes) ? WideCharacter{sjis_to_unicode(*bytes), 1}
                                               : NO_CHARACTER;
    });
}

// A sequence belongs to the character behind it: without one it isn't taken.
void decode_jis(Stretch& s) {
    while (s.from != s.fromEnd && s.to != s.toEnd) {
        const Stretch before = s;
        if (*s.from == ESC && !take_escape_sequence(s)) return;
        const bool goesOn = s.kanjiMode ? take_kanji(s) : take_jis_ascii(s);
        if (s.to == before.to) s = before;
        if (!goesOn || s.to == before.to) return;
    }
}

// The units that aren't usual.
lanes::Match unusual(const lanes::Units8& units) {
    using namespace lanes;
    const Match controls =
        except(up_to(units, 0x1F), either(equal(units, '\t'), equal(units, '\n')));
    const Match surrogates = equal(masked(units, 0xF800), 0xD800);
    return either(either(controls, surrogates), from(units, 0xFFFE));
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
void take_usual_units(Stretch& s) {
    while (static_cast<std::size_t>(s.fromEnd - s.from) >= 2 * lanes::UNITS &&
           static_cast<std::size_t>(s.toEnd - s.to) >= lanes::UNITS) {
        lanes::Units8 units = lanes::load_units(s.from);
        if (isBigEndian) units = lanes::swapped(units);
        lanes::store(s.to, units);
        const std::uint64_t found = lanes::bits(unusual(units));
        const std::size_t count = found != 0 ? lanes::first_lane(found) : lanes::UNITS;
        s.from += 2 * count;
        s.to += count;
        if (found != 0) return;
    }
}

template <bool isBigEndian>
void decode_utf16(Stretch& s) {
    while (s.fromEnd - s.from >= 2 && s.to != s.toEnd) {
        take_usual_units<isBigEndian>(s);
        if (s.fromEnd - s.from < 2 || s.to == s.toEnd) return;
        if (!take_unit<isBigEndian>(s)) return;
    }
}

}  // namespace

BulkDecoder select_bulk_decoder(EncodingId encoding, ByteOrder byteOrder) {
    switch (encoding) {
        case UTF8: return decode_utf8;
        case UTF16:
            return byteOrder == BYTES_BIG_ENDIAN ? decode_utf16<true> : decode_utf16<false>;
        case SJIS: return decode_sjis;
        case EUC: return decode_euc;
        case JIS: return decode_jis;
    }
    return nullptr;
}

void copy_units(Stretch& s) {
    const auto* next = reinterpret_cast<const Unit*>(s.from);
    for (; s.to != s.toEnd && *next != 0; ++next) *s.to++ = *next;
    s.from = reinterpret_cast<const unsigned char*>(next);
}

}  // namespace qvox

#include "writer/encoders.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "text/japanese_codes.h"

namespace qvox {

namespace {

// Units that are looked at together.
constexpr std::size_t RUN = 8;
constexpr std::size_t PAIRS = 4;

bool is_ascii_run(const Unit* units) {
    std::uint64_t halves[2];
    std::memcpy(halves, units, sizeof halves);
    return ((halves[0] | halves[1]) & 0xFF80FF80FF80FF80) == 0;
}

// The copies keep the compiler from fearing that one array overlaps the other.
void narrow_run(const Unit* units, char* to) {
    Unit from[RUN];
    char bytes[RUN];
    std::memcpy(from, units, sizeof from);
    for (std::size_t i = 0; i < RUN; ++i) bytes[i] = static_cast<char>(from[i]);
    std::memcpy(to, bytes, sizeof bytes);
}

struct ToSjis {
    int operator()(Unit unit) const { return unicode_to_sjis(unit); }
};

// A pair in EUC-JP is a sum to which each byte of the pair in Shift_JIS adds its share. The shares
// are looked up, because a text in kanji spends much of its time here. What Shift_JIS has beyond
// the rows of EUC-JP goes the long way.
class ToEuc {
public:
    ToEuc() {
        for (int byte = 0; byte < 256; ++byte) {
            lead[byte] = sjis_to_euc(byte * 256 + 0x40);
            trail[byte] = sjis_to_euc(0x8100 + byte) - sjis_to_euc(0x8140);
        }
    }

    int operator()(Unit unit) const {
        const int code = unicode_to_sjis(unit);
        if (code < 0x100 || code >= 0xF000) return unicode_to_euc(unit);
        return lead[code >> 8] + trail[code & 0xFF];
    }

private:
    int lead[256];
    int trail[256];
};

inline char* put_code(int code, char* to) {
    if (code <= 0xFF) {
        *to = static_cast<char>(code);
        return to + 1;
    }
    to[0] = static_cast<char>(code >> 8);
    to[1] = static_cast<char>(code & 0xFF);
    return to + 2;
}

// The two bytes of a code as they follow each other.
Unit as_written(int code) {
    const unsigned char bytes[2] = {static_cast<unsigned char>(code >> 8),
                                    static_cast<unsigned char>(code & 0xFF)};
    Unit pair = 0;
    std::memcpy(&pair, bytes, sizeof pair);
    return pair;
}

// Characters of two bytes, PAIRS of them, without asking at each: false where one of them takes a
// single byte.
template <class CodeOf>
bool put_pairs(const CodeOf& codeOf, const Unit* units, char* to) {
    const int codes[PAIRS] = {codeOf(units[0]), codeOf(units[1]), codeOf(units[2]),
                              codeOf(units[3])};
    const Unit pairs[PAIRS] = {as_written(codes[0]), as_written(codes[1]), as_written(codes[2]),
                               as_written(codes[3])};
    std::memcpy(to, pairs, sizeof pairs);
    return std::min({codes[0], codes[1], codes[2], codes[3]}) > 0xFF;
}

// Returns where the bytes end; there must be room for two a unit.
template <class CodeOf>
char* encode(const CodeOf& codeOf, const Unit* units, std::size_t count, char* to) {
    const Unit* const end = units + count;
    for (const Unit* unit = units; unit != end; ++unit) {
        const auto left = static_cast<std::size_t>(end - unit);
        if (*unit >= 0x80) {
            if (left >= PAIRS && put_pairs(codeOf, unit, to)) {
                unit += PAIRS - 1;
                to += 2 * PAIRS;
            } else {
                to = put_code(codeOf(*unit), to);
            }
        } else if (left >= RUN && is_ascii_run(unit)) {
            narrow_run(unit, to);
            unit += RUN - 1;
            to += RUN;
        } else {
            *to++ = static_cast<char>(*unit);
        }
    }
    return to;
}

}  // namespace

char* encode_units(EncodingId encoding, const Unit* units, std::size_t count, char* to) {
    static const ToEuc toEuc;
    return encoding == EUC ? encode(toEuc, units, count, to) : encode(ToSjis(), units, count, to);
}

}  // namespace qvox

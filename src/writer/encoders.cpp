#include "writer/encoders.h"

#include <cstdint>
#include <cstring>

#include "text/japanese_codes.h"

namespace qvox {

namespace {

// Units that are looked at together.
constexpr std::size_t RUN = 8;

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

// Returns where the bytes end; there must be room for two a unit.
template <class CodeOf>
char* encode(const CodeOf& codeOf, const Unit* units, std::size_t count, char* to) {
    const Unit* const end = units + count;
    for (const Unit* unit = units; unit != end; ++unit) {
        if (*unit >= 0x80) {
            to = put_code(codeOf(*unit), to);
        } else if (static_cast<std::size_t>(end - unit) >= RUN && is_ascii_run(unit)) {
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

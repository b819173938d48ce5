// The Japanese encodings come from one table, JIS X 0208 by Unicode, that the C library's
// conversion of EUC-JP gives; the other byte forms of a JIS code follow by arithmetic.
#include "encodings.h"

#include <iconv.h>
#include <stdexcept>
#include <vector>

namespace bench {
namespace {

using JisCode = unsigned short;

constexpr unsigned firstCell = 0x21;
constexpr unsigned lastCell = 0x7E;
constexpr unsigned lastRow = 0x74;
constexpr unsigned firstKanjiRow = 0x30;
// The last row of level 1 isn't full; the one in front of it is.
constexpr unsigned lastCommonKanjiRow = 0x4E;

class EucReader {
public:
    EucReader() : conversion(iconv_open("UTF-16LE", "EUC-JP")) {
        if (conversion == failed()) throw std::runtime_error("no conversion of EUC-JP");
    }
    EucReader(const EucReader&) = delete;
    EucReader& operator=(const EucReader&) = delete;
    ~EucReader() { iconv_close(conversion); }

    /// 0 for a code without character.
    char16_t read(unsigned row, unsigned cell) {
        char euc[] = {static_cast<char>(row | 0x80U), static_cast<char>(cell | 0x80U)};
        unsigned char utf16[2] = {0, 0};
        char* from = euc;
        char* to = reinterpret_cast<char*>(utf16);
        std::size_t fromLeft = sizeof euc;
        std::size_t toLeft = sizeof utf16;
        const std::size_t result = iconv(conversion, &from, &fromLeft, &to, &toLeft);
        if (result == static_cast<std::size_t>(-1)) {
            iconv(conversion, nullptr, nullptr, nullptr, nullptr);
            return 0;
        }
        return static_cast<char16_t>(utf16[0] | utf16[1] << 8);
    }

private:
    static iconv_t failed() { return reinterpret_cast<iconv_t>(-1); }

    iconv_t conversion;
};

/// The JIS code of each 16-bit unit; 0 where it has none.
const std::vector<JisCode>& jisTable() {
    static const std::vector<JisCode> table = [] {
        std::vector<JisCode> codes(0x10000, 0);
        EucReader reader;
        for (unsigned row = firstCell; row <= lastRow; ++row) {
            for (unsigned cell = firstCell; cell <= lastCell; ++cell) {
                codes[reader.read(row, cell)] = static_cast<JisCode>(row << 8 | cell);
            }
        }
        codes[0] = 0;
        return codes;
    }();
    return table;
}

void appendPair(unsigned high, unsigned low, std::string& bytes) {
    bytes += static_cast<char>(high);
    bytes += static_cast<char>(low);
}

void appendShiftJis(unsigned row, unsigned cell, std::string& bytes) {
    const unsigned lead = (row - firstCell) / 2 + 0x81;
    const unsigned lowerHalf = cell + (cell < 0x60 ? 0x1FU : 0x20U);
    const unsigned trail = row % 2 == 0 ? cell + 0x7E : lowerHalf;
    appendPair(lead < 0xA0 ? lead : lead + 0x40, trail, bytes);
}

void appendUtf8(char16_t unit, std::string& bytes) {
    const unsigned code = unit;
    if (utf8Length(unit) == 1) {
        bytes += static_cast<char>(code);
        return;
    }
    bytes += static_cast<char>(0xE0 | code >> 12);
    appendPair(0x80 | (code >> 6 & 0x3F), 0x80 | (code & 0x3F), bytes);
}

}  // namespace

const char* nameOf(Encoding encoding) {
    switch (encoding) {
        case Encoding::Utf8: return "UTF-8";
        case Encoding::Utf16Little:
        case Encoding::Utf16Big: return "UTF-16";
        case Encoding::ShiftJis: return "Shift_JIS";
        case Encoding::EucJp: return "EUC-JP";
        case Encoding::Iso2022Jp: return "ISO-2022-JP";
    }
    throw std::invalid_argument("no such encoding");
}

bool isJapaneseCode(Encoding encoding) {
    return encoding == Encoding::ShiftJis || encoding == Encoding::EucJp ||
           encoding == Encoding::Iso2022Jp;
}

int utf8Length(char16_t unit) {
    if (unit < 0x80) return 1;
    if (unit < 0x800 || (unit >= 0xD800 && unit < 0xE000)) {
        throw std::invalid_argument("character of two or four bytes in UTF-8");
    }
    return 3;
}

const std::u16string& commonKanji() {
    static const std::u16string kanji = [] {
        std::u16string units;
        EucReader reader;
        for (unsigned row = firstKanjiRow; row <= lastCommonKanjiRow; ++row) {
            for (unsigned cell = firstCell; cell <= lastCell; ++cell) {
                units += reader.read(row, cell);
            }
        }
        return units;
    }();
    return kanji;
}

void Encoder::append(std::u16string_view text, std::string& bytes) {
    for (const char16_t unit : text) appendUnit(unit, bytes);
}

void Encoder::appendUnit(char16_t unit, std::string& bytes) {
    if (encoding == Encoding::Utf8) return appendUtf8(unit, bytes);
    if (encoding == Encoding::Utf16Little) return appendPair(unit & 0xFFU, unit >> 8U, bytes);
    if (encoding == Encoding::Utf16Big) return appendPair(unit >> 8U, unit & 0xFFU, bytes);
    if (unit >= 0x80) return appendJis(unit, bytes);
    if (inKanji) bytes += "\x1B(J";
    inKanji = false;
    bytes += static_cast<char>(unit);
}

void Encoder::appendJis(char16_t unit, std::string& bytes) {
    const unsigned code = jisTable()[unit];
    if (code == 0) throw std::invalid_argument("character that JIS X 0208 doesn't have");
    const unsigned row = code >> 8;
    const unsigned cell = code & 0xFF;
    if (encoding == Encoding::ShiftJis) return appendShiftJis(row, cell, bytes);
    if (encoding == Encoding::EucJp) return appendPair(row | 0x80, cell | 0x80, bytes);
    if (!inKanji) bytes += "\x1B$B";
    inKanji = true;
    appendPair(row, cell, bytes);
}

}  // namespace bench

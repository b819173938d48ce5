#include "target_encoding.h"

#include <algorithm>
#include <cctype>
#include <iterator>

#include "characters.h"

namespace {

// A carriage return is read as a line feed.
bool ascii_takes(char32_t character) { return character < 0x80 && character != '\r'; }

// One and three bytes: the parsers read no others.
bool utf8_takes(char32_t character) {
    return ascii_takes(character) ||
           (character >= 0x800 && character < 0x10000 && !is_surrogate(character));
}

void to_utf8(const Units& text, std::string& bytes) {
    const unsigned short* const end = text.data() + text.size();
    for (const unsigned short* unit = text.data(); unit != end;) {
        append_utf8(bytes, next_character(unit, end));
    }
}

// The parsers read no surrogates.
bool utf16_takes(char32_t character) {
    return ascii_takes(character) ||
           (character >= 0x80 && character < 0x10000 && !is_surrogate(character));
}

// As the library writes a file: in the machine's order, and with CR LF.
const std::string_view UTF16_MARK = "\xFF\xFE";

void to_utf16(const Units& text, std::string& bytes) {
    const auto append = [&bytes](unsigned short unit) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    };
    for (const unsigned short unit : text) {
        if (unit == '\n') append('\r');
        append(unit);
    }
}

using Converter = unsigned char* (qvox::Xstring::*)(unsigned char* buffer) const;

// The library's converters make CR LF of a line feed.
template <Converter convert>
void to_narrow(const Units& text, std::string& bytes) {
    const qvox::Xstring units(text.c_str(), static_cast<int>(text.size()));
    const std::size_t start = bytes.size();
    bytes.resize(start + 2 * text.size() + 1);
    auto* const buffer = reinterpret_cast<unsigned char*>(bytes.data() + start);
    (units.*convert)(buffer);
    bytes.resize(bytes.find('\0', start));
}

// Beyond ASCII a single byte of ASCII is "?", or what looks alike: the backslash of a yen sign and
// the tilde of an overline would be read as themselves.
template <Converter convert>
bool narrow_takes(char32_t character) {
    if (character < 0x80 || character > 0xFFFF) return ascii_takes(character);
    std::string bytes;
    to_narrow<convert>(Units(1, static_cast<unsigned short>(character)), bytes);
    return static_cast<unsigned char>(bytes[0]) >= 0x80;
}

constexpr Converter TO_SJIS = &qvox::Xstring::sjis_str;
constexpr Converter TO_EUC = &qvox::Xstring::euc_str;

const TargetEncoding TARGET_ENCODINGS[] = {
    {"UTF-8", {}, false, "can't be read from UTF-8", utf8_takes, false, to_utf8},
    {"UTF-16", UTF16_MARK, false, "can't be read from UTF-16", utf16_takes, false, to_utf16},
    {"Shift_JIS",
     {},
     true,
     "can't be written in Shift_JIS",
     narrow_takes<TO_SJIS>,
     true,
     to_narrow<TO_SJIS>},
    {"EUC-JP",
     {},
     true,
     "can't be written in EUC-JP",
     narrow_takes<TO_EUC>,
     true,
     to_narrow<TO_EUC>},
};

struct Name {
    std::string_view name;
    int encoding;
};

constexpr Name NAMES[] = {
    {"UTF-8", 0},       {"UTF8", 0},     {"UTF-16", 1}, {"UTF16", 1},  {"Shift_JIS", 2},
    {"Shift-JIS", 2},   {"ShiftJIS", 2}, {"SJIS", 2},   {"CP932", 2},  {"MS932", 2},
    {"Windows-31J", 2}, {"EUC-JP", 3},   {"EUCJP", 3},  {"EUC_JP", 3},
};

bool is_same_letter(char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) ==
           std::tolower(static_cast<unsigned char>(b));
}

}  // namespace

std::string target_encoding_names(const char* separator) {
    std::string names;
    for (const TargetEncoding& encoding : TARGET_ENCODINGS) {
        if (!names.empty()) names += separator;
        names += encoding.name;
    }
    return names;
}

const TargetEncoding* target_encoding(const std::string& name) {
    const auto* const alias =
        std::find_if(std::begin(NAMES), std::end(NAMES), [&name](const Name& candidate) {
            return std::equal(candidate.name.begin(), candidate.name.end(), name.begin(),
                              name.end(), is_same_letter);
        });
    return alias == std::end(NAMES) ? nullptr : &TARGET_ENCODINGS[alias->encoding];
}

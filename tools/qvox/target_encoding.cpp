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

std::string to_utf8(const Units& text) {
    std::string bytes;
    const unsigned short* const end = text.data() + text.size();
    for (const unsigned short* unit = text.data(); unit != end;) {
        append_utf8(bytes, next_character(unit, end));
    }
    return bytes;
}

// The parsers read no surrogates.
bool utf16_takes(char32_t character) {
    return ascii_takes(character) ||
           (character >= 0x80 && character < 0x10000 && !is_surrogate(character));
}

// As the library writes a file: with a byte order mark, in the machine's order, and with CR LF.
std::string to_utf16(const Units& text) {
    Units units(1, 0xFEFF);
    for (const unsigned short unit : text) {
        if (unit == '\n') units += '\r';
        units += unit;
    }
    const auto* const bytes = reinterpret_cast<const char*>(units.data());
    return {bytes, units.size() * sizeof(unsigned short)};
}

using Converter = unsigned char* (qvox::Xstring::*)(unsigned char* buffer) const;

// The library's converters make CR LF of a line feed.
template <Converter convert>
std::string to_narrow(const Units& text) {
    qvox::Xstring units;
    units = text.c_str();
    std::string bytes(2 * text.size() + 1, '\0');
    (units.*convert)(reinterpret_cast<unsigned char*>(bytes.data()));
    bytes.resize(bytes.find('\0'));
    return bytes;
}

// Beyond ASCII a single byte of ASCII is "?", or what looks alike: the backslash of a yen sign and
// the tilde of an overline would be read as themselves.
template <Converter convert>
bool narrow_takes(char32_t character) {
    if (character < 0x80 || character > 0xFFFF) return ascii_takes(character);
    const std::string bytes = to_narrow<convert>(Units(1, static_cast<unsigned short>(character)));
    return static_cast<unsigned char>(bytes[0]) >= 0x80;
}

constexpr Converter TO_SJIS = &qvox::Xstring::sjis_str;
constexpr Converter TO_EUC = &qvox::Xstring::euc_str;

constexpr TargetEncoding TARGET_ENCODINGS[] = {
    {"UTF-8", false, true, "can't be read from UTF-8, nor be references where they stand",
     utf8_takes, to_utf8},
    {"UTF-16", false, false, "can't be read from UTF-16", utf16_takes, to_utf16},
    {"Shift_JIS", true, false, "can't be written in Shift_JIS", narrow_takes<TO_SJIS>,
     to_narrow<TO_SJIS>},
    {"EUC-JP", true, false, "can't be written in EUC-JP", narrow_takes<TO_EUC>, to_narrow<TO_EUC>},
};

bool is_same_letter(char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) ==
           std::tolower(static_cast<unsigned char>(b));
}

}  // namespace

std::vector<std::string> target_encoding_names() {
    std::vector<std::string> names;
    for (const TargetEncoding& encoding : TARGET_ENCODINGS) names.emplace_back(encoding.name);
    return names;
}

const TargetEncoding& target_encoding(const std::string& name) {
    return *std::find_if(std::begin(TARGET_ENCODINGS), std::end(TARGET_ENCODINGS),
                         [&name](const TargetEncoding& encoding) {
                             const std::string own = encoding.name;
                             return std::equal(own.begin(), own.end(), name.begin(), name.end(),
                                               is_same_letter);
                         });
}

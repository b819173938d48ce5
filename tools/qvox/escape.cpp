#include "escape.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "characters.h"

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// What isn't shown as itself: controls, blanks other than U+0020 and the ideographic one, what a
// terminal leaves out or takes for an instruction, surrogates and noncharacters.
constexpr Range HIDDEN[] = {
    {0x00, 0x1F},       {0x7F, 0xA0},       {0xAD, 0xAD},       {0x34F, 0x34F},   {0x61C, 0x61C},
    {0x115F, 0x1160},   {0x1680, 0x1680},   {0x17B4, 0x17B5},   {0x180B, 0x180F}, {0x2000, 0x200F},
    {0x2028, 0x202F},   {0x205F, 0x206F},   {0x2800, 0x2800},   {0x3164, 0x3164}, {0xD800, 0xDFFF},
    {0xFDD0, 0xFDEF},   {0xFE00, 0xFE0F},   {0xFEFF, 0xFEFF},   {0xFFA0, 0xFFA0}, {0xFFF0, 0xFFFB},
    {0x1BCA0, 0x1BCA3}, {0x1D173, 0x1D17A}, {0xE0000, 0xE0FFF},
};

bool is_hidden(char32_t character) {
    if ((character & 0xFFFE) == 0xFFFE) return true;  // the last two of each plane
    const auto* const range = std::lower_bound(
        std::begin(HIDDEN), std::end(HIDDEN), character,
        [](const Range& candidate, char32_t wanted) { return candidate.last < wanted; });
    return range != std::end(HIDDEN) && range->first <= character;
}

void append_hexadecimal(std::string& out, std::uint_least32_t number) {
    char digits[8];
    out.append(digits, std::to_chars(std::begin(digits), std::end(digits), number, 16).ptr);
}

void append_escaped(std::string& out, char32_t character, Style style) {
    switch (character) {
        case '\t': out += "\\t"; return;
        case '\n': out += "\\n"; return;
        case '\r': out += "\\r"; return;
        case '\\':
        case '"':
            if (style == Style::QUOTED) out += '\\';
            break;
        default: break;
    }
    if (is_hidden(character)) {
        out += "\\u{";
        append_hexadecimal(out, character);
        out += '}';
    } else {
        append_utf8(out, character);
    }
}

}  // namespace

void escape_units(std::string& out, const unsigned short* units, int count, Style style) {
    const unsigned short* const end = units + count;
    while (units != end) append_escaped(out, next_character(units, end), style);
}

void escape_file_name(std::string& out, const std::string& name, Style style) {
    std::string_view bytes = name;
    while (!bytes.empty()) {
        char32_t character = 0;
        const std::size_t size = decode_utf8(bytes, character);
        if (size == 0) {
            out += "\\x";  // two digits will follow, since all below 0x80 is UTF-8
            append_hexadecimal(out, static_cast<unsigned char>(bytes[0]));
        } else {
            append_escaped(out, character, style);
        }
        bytes.remove_prefix(std::max<std::size_t>(size, 1));
    }
}

void quote(std::string& out, const qvox::Xstring& text) {
    if (text.isNull()) {
        out += "null";
        return;
    }
    out += '"';
    escape_units(out, text.data(), text.length(), Style::QUOTED);
    out += '"';
}

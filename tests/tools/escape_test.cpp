#include "../../tools/qvox/escape.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Units = std::vector<unsigned short>;

TEST(Escape, Units) {
    const struct {
        Units units;
        const char* plain;
        const char* quoted;
    } cases[] = {
        {{}, "", ""},
        {{'a', ' ', '~', '\\', '"'}, "a ~\\\"", "a ~\\\\\\\""},
        {{'\t', '\n', '\r', 0x01, 0x1B}, "\\t\\n\\r\\u{1}\\u{1b}", "\\t\\n\\r\\u{1}\\u{1b}"},
        {{0x7F, 0x85, 0xA0, 0xA1}, "\\u{7f}\\u{85}\\u{a0}¡", "\\u{7f}\\u{85}\\u{a0}¡"},
        {{0xE9, 0x7FF, 0x800, 0x3042, 0x3000, 0xFF71}, "é߿ࠀあ　ｱ", "é߿ࠀあ　ｱ"},
        {{0x200B, 0x202E, 0x2066, 0xFEFF},
         "\\u{200b}\\u{202e}\\u{2066}\\u{feff}",
         "\\u{200b}\\u{202e}\\u{2066}\\u{feff}"},
        {{0xFDCF, 0xFDD0, 0xFDEF, 0xFFFE, 0xFFFF},
         "\xEF\xB7\x8F\\u{fdd0}\\u{fdef}\\u{fffe}\\u{ffff}",
         "\xEF\xB7\x8F\\u{fdd0}\\u{fdef}\\u{fffe}\\u{ffff}"},
        {{0xD842, 0xDFB7, 0xD83F, 0xDFFE, 0xDBFF, 0xDFFD},
         "𠮷\\u{1fffe}\xF4\x8F\xBF\xBD",
         "𠮷\\u{1fffe}\xF4\x8F\xBF\xBD"},
        {{0xD800, 'a', 0xDC00, 0xD800, 0xD800, 0xDC00, 0xD800},
         "\\u{d800}a\\u{dc00}\\u{d800}𐀀\\u{d800}",
         "\\u{d800}a\\u{dc00}\\u{d800}𐀀\\u{d800}"},
        {{0xDB40, 0xDD00}, "\\u{e0100}", "\\u{e0100}"},
    };
    for (const auto& [units, plain, quoted] : cases) {
        std::string out = "|";
        escape_units(out, units.data(), static_cast<int>(units.size()), Style::PLAIN);
        escape_units(out += '|', units.data(), static_cast<int>(units.size()), Style::QUOTED);
        EXPECT_EQ(out, '|' + std::string(plain) + '|' + quoted);
    }
}

TEST(Escape, BytesOfFileNames) {
    const struct {
        const char* bytes;
        const char* escaped;
    } cases[] = {
        {"注文\\é\"𠮷.xml", "注文\\é\"𠮷.xml"},
        {"a\nb\x7F", "a\\nb\\u{7f}"},
        {"\x92\x8D\x95\xB6.xml", "\\x92\\x8d\\x95\\xb6.xml"},     // Shift_JIS
        {"\xE6\xB3", "\\xe6\\xb3"},                               // cut off
        {"\xE6\xB3z", "\\xe6\\xb3z"},                             // broken off
        {"\xC0\xAF \xE0\x80\xAF", "\\xc0\\xaf \\xe0\\x80\\xaf"},  // longer than need be
        {"\xED\xA0\x80 \xF4\x90\x80\x80", "\\xed\\xa0\\x80 \\xf4\\x90\\x80\\x80"},  // no characters
        {"\xE2\x80\xAE", "\\u{202e}"},
    };
    for (const auto& [bytes, escaped] : cases) {
        std::string out;
        escape_file_name(out, bytes, Style::PLAIN);
        EXPECT_EQ(out, escaped);
    }
}

TEST(Escape, NullEmptyAndTextDiffer) {
    const unsigned short text[] = {'n', 'u', 'l', 'l', 0};
    std::string out;
    quote(out, qvox::Xstring());
    quote(out, qvox::Xstring(""));
    quote(out, qvox::Xstring(text, 4));
    EXPECT_EQ(out, "null\"\"\"null\"");
}

}  // namespace

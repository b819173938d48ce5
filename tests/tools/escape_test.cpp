#include "../../tools/qvox/escape.h"

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(Escape, Units) {
    const struct {
        std::u16string text;
        const char* plain;
        const char* quoted = plain;
    } cases[] = {
        {u"", ""},
        {u"a ~\\\"", "a ~\\\"", "a ~\\\\\\\""},
        {u"\t\n\r\x01\x1B", "\\t\\n\\r\\u{1}\\u{1b}"},
        {u"\x7F\u0085\u00A0\u00A1", "\\u{7f}\\u{85}\\u{a0}¡"},
        {u"é߿ࠀあ　ｱ", "é߿ࠀあ　ｱ"},
        {u"\u200B\u202E\u2066\uFEFF", "\\u{200b}\\u{202e}\\u{2066}\\u{feff}"},
        {u"\uFDCF\uFDD0\uFDEF\uFFFE\uFFFF", "\xEF\xB7\x8F\\u{fdd0}\\u{fdef}\\u{fffe}\\u{ffff}"},
        {u"𠮷\U0001FFFE\U0010FFFD\U000E0100", "𠮷\\u{1fffe}\xF4\x8F\xBF\xBD\\u{e0100}"},
        {{0xD800, 'a', 0xDC00, 0xD800, 0xD800, 0xDC00, 0xD800},
         "\\u{d800}a\\u{dc00}\\u{d800}𐀀\\u{d800}"},
    };
    for (const auto& [text, plain, quoted] : cases) {
        const auto* const units = reinterpret_cast<const unsigned short*>(text.data());
        std::string out = "|";
        escape_units(out, units, static_cast<int>(text.size()), Style::PLAIN);
        escape_units(out += '|', units, static_cast<int>(text.size()), Style::QUOTED);
        EXPECT_EQ(out, '|' + std::string(plain) + '|' + quoted);
    }
}

TEST(Escape, BytesOfFileNames) {
    const char* const cases[][2] = {
        {"注文\\é\"𠮷.xml", "注文\\é\"𠮷.xml"},
        {"a\nb\x7F\xE2\x80\xAE", "a\\nb\\u{7f}\\u{202e}"},
        {"\x92\x8D\x95\xB6.xml", "\\x92\\x8d\\x95\\xb6.xml"},     // Shift_JIS
        {"\xE6\xB3", "\\xe6\\xb3"},                               // cut off
        {"\xE6\xB3z", "\\xe6\\xb3z"},                             // broken off
        {"\xC0\xAF \xE0\x80\xAF", "\\xc0\\xaf \\xe0\\x80\\xaf"},  // longer than need be
        {"\xED\xA0\x80 \xF4\x90\x80\x80", "\\xed\\xa0\\x80 \\xf4\\x90\\x80\\x80"},  // no characters
    };
    for (const auto& [bytes, escaped] : cases) {
        std::string out;
        escape_file_name(out, bytes, Style::PLAIN);
        EXPECT_EQ(out, escaped);
    }
}

TEST(Escape, NullEmptyAndTextDiffer) {
    std::string out;
    for (const qvox::Xstring& text : {qvox::Xstring(), qvox::Xstring(""), qvox::Xstring("null")}) {
        quote(out, text);
    }
    EXPECT_EQ(out, "null\"\"\"null\"");
}

}  // namespace

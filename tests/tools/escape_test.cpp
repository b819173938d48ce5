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

}  // namespace

#include "text/char_classes.h"

#include <string>

#include <gtest/gtest.h>

namespace qvox {
namespace {

template <typename Predicate>
void expect_set(Predicate isMember, int first, int count, long long sum) {
    for (int c = first; c <= 0xFFFF; ++c) {
        if (!isMember(c)) continue;
        --count;
        sum -= c;
    }
    EXPECT_EQ(count, 0);
    EXPECT_EQ(sum, 0);
}

// How many there are and what they add up to, as an independent XML parser has it that was asked
// about each character.
TEST(CharClasses, NameCharactersAreThoseOfXml10) {
    expect_set(is_name_start, 0, 54 + 34462, 5015 + 1199911107LL);
    expect_set(is_name_char, 0, 66 + 35056, 5631 + 1201716630LL);
    // Each class by itself gives the same, and nothing beyond 16 bits.
    for (unsigned c = 0x80; c <= 0x20000; ++c) {
        const bool isLetter = is_base_char(c) || is_ideographic(c);
        const int classes = (isLetter ? 1 : 0) + (is_digit(c) ? 1 : 0) +
                            (is_combining_char(c) ? 1 : 0) + (is_extender(c) ? 1 : 0);
        ASSERT_EQ(is_letter(c), isLetter) << c;
        ASSERT_EQ(is_wide_name_start(c), isLetter) << c;
        ASSERT_EQ(is_wide_name_char(c) ? 1 : 0, classes) << c;
    }
}

TEST(CharClasses, Ascii) {
    const std::u16string spaces = u"\t\n\r ";
    const std::u16string names =
        u"-.0123456789:ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz";
    for (int c = -1; c < 0x10000; ++c) {
        const auto unit = static_cast<char16_t>(c);
        const bool isSpace = c >= 0 && spaces.find(unit) != std::u16string::npos;
        EXPECT_EQ(is_space(c), isSpace) << c;
        if (c >= 0x80) continue;
        const bool isName = c >= 0 && names.find(unit) != std::u16string::npos;
        EXPECT_EQ(is_name_start(c), isName && names.find(unit) >= 12) << c;
        EXPECT_EQ(is_name_char(c), isName) << c;
        if (c < 0) continue;
        EXPECT_EQ(charClassTable[c], isSpace              ? CLASS_SPACE
                                     : isName             ? CLASS_NAME
                                     : c < 32 || c == 127 ? CLASS_NONE
                                                          : CLASS_SYMBOL);
    }
}

TEST(CharClasses, Names) {
    for (const char16_t* const name : {u"", u"a", u":", u"a:b:c", u"_-.9", u"日本語", u"データー",
                                       u"佐々木", u"〇", u"a\u00B7", u"a\u0660", u"e\u0301"}) {
        EXPECT_TRUE(isName(reinterpret_cast<const Unit*>(name))) << testing::PrintToString(name);
    }
    for (const char16_t* const text :
         {u"々", u"ー", u"\u00B7", u"\u0300", u"9a", u"-a", u".a", u"a b", u" a", u"a ", u"a/",
          u"a\u3000b", u"Ａ", u"aＡ", u"ｱ", u"a\uFFFE", u"𠮷", u"a𠮷", u"漢\x7F"}) {
        EXPECT_FALSE(isName(reinterpret_cast<const Unit*>(text))) << testing::PrintToString(text);
    }
}

}  // namespace
}  // namespace qvox

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
    const std::string spaces = "\t\n\r ";
    const std::string names = "-.0123456789:ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz";
    for (int c = 0; c < 0x80; ++c) {
        const std::size_t at = names.find(static_cast<char>(c));
        const bool isName = at != std::string::npos;
        const bool isSpace = spaces.find(static_cast<char>(c)) != std::string::npos;
        EXPECT_EQ(is_space(c), isSpace) << c;
        EXPECT_EQ(is_name_start(c), isName && at >= 12) << c;
        EXPECT_EQ(is_name_char(c), isName) << c;
        EXPECT_EQ(charClassTable[c], isSpace              ? CLASS_SPACE
                                     : isName             ? CLASS_NAME
                                     : c < 32 || c == 127 ? CLASS_NONE
                                                          : CLASS_SYMBOL);
    }
    EXPECT_FALSE(is_space(-1) || is_name_start(-1) || is_name_char(-1));
    expect_set(is_space, 0, 4, 9 + 10 + 13 + 32);
}

TEST(CharClasses, Names) {
    for (const char16_t* const name : {u"", u"a:b:c", u"_-.9", u"データー", u"〇\u00B7e\u0301"}) {
        EXPECT_TRUE(isName(reinterpret_cast<const Unit*>(name))) << testing::PrintToString(name);
    }
    for (const char16_t* const text : {u"々", u"\u0300", u"9a", u"a b", u" a", u"a/", u"a\u3000b",
                                       u"aＡ", u"a\uFFFE", u"𠮷", u"漢\x7F"}) {
        EXPECT_FALSE(isName(reinterpret_cast<const Unit*>(text))) << testing::PrintToString(text);
    }
}

}  // namespace
}  // namespace qvox

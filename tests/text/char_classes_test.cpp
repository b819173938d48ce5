#include "text/char_classes.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "text/char_class_tables.h"

namespace qvox {
namespace {

constexpr int LAST_UNIT = 0xFFFF;

using ClassTest = bool (*)(unsigned);

template <typename Predicate>
void expect_set(Predicate isMember, int first, int count, long long sum) {
    for (int c = first; c <= LAST_UNIT; ++c) {
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
    expect_set([](int c) { return is_letter(static_cast<unsigned>(c)); }, 0x80, 34462,
               1199911107LL);
}

TEST(CharClasses, WideTestsAreTheUnionOfTheClasses) {
    for (unsigned c = 0x80; c <= 0x20000; ++c) {
        const bool isLetter = is_base_char(c) || is_ideographic(c);
        const int classes = (isLetter ? 1 : 0) + (is_digit(c) ? 1 : 0) +
                            (is_combining_char(c) ? 1 : 0) + (is_extender(c) ? 1 : 0);
        ASSERT_LE(classes, 1) << c;
        ASSERT_EQ(is_letter(c), isLetter) << c;
        ASSERT_EQ(is_wide_name_start(c), isLetter) << c;
        ASSERT_EQ(is_wide_name_char(c), classes == 1) << c;
    }
}

TEST(CharClasses, EdgesOfRows) {
    const struct {
        ClassTest test;
        unsigned inside[6];
        unsigned outside[6];
    } cases[] = {
        {is_base_char,
         {0x41, 0x7A, 0xC0, 0x386, 0xAC00, 0xD7A3},
         {0x40, 0xB7, 0x385, 0x387, 0xD7A4, 0xFF21}},
        {is_ideographic,
         {0x3007, 0x3021, 0x3029, 0x4E00, 0x6F22, 0x9FA5},
         {0x3006, 0x3008, 0x3020, 0x302A, 0x4DFF, 0x9FA6}},
        {is_digit,
         {0x30, 0x39, 0x660, 0xBE7, 0xF20, 0xF29},
         {0x2F, 0x3A, 0x66A, 0xBE6, 0xF2A, 0xFF10}},
        {is_combining_char,
         {0x300, 0x345, 0x5BF, 0x6DD, 0x3099, 0x309A},
         {0x2FF, 0x346, 0x5C0, 0x6E5, 0x3098, 0x309B}},
        {is_extender,
         {0xB7, 0x2D0, 0x2D1, 0x387, 0x3005, 0x30FE},
         {0xB6, 0xB8, 0x2D2, 0x386, 0x3036, 0x30FF}},
    };
    for (const auto& row : cases) {
        for (const unsigned code : row.inside) EXPECT_TRUE(row.test(code)) << std::hex << code;
        for (const unsigned code : row.outside) EXPECT_FALSE(row.test(code)) << std::hex << code;
        for (const unsigned code : {0U, 0x10000U, ~0U}) EXPECT_FALSE(row.test(code)) << code;
    }
}

template <std::size_t Rows>
void expect_ascending(const CharRange (&table)[Rows]) {
    std::uint32_t last = 0;
    for (const CharRange& row : table) {
        EXPECT_GT(row.first, last) << std::hex << row.first;
        EXPECT_TRUE(row.last == 0 || row.last > row.first) << std::hex << row.first;
        last = row.last != 0 ? row.last : row.first;
    }
}

TEST(CharClasses, RowsAreInOrder) {
    expect_ascending(baseCharTable);
    expect_ascending(ideographicTable);
    expect_ascending(digitTable);
    expect_ascending(combiningCharTable);
    expect_ascending(extenderTable);
}

TEST(CharClasses, Ascii) {
    const std::string spaces = "\t\n\r ";
    const std::string starts = ":ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz";
    const std::string names = starts + "-.0123456789";
    const auto has = [](const std::string& set, int c) {
        return c >= 0 && c < 0x80 && set.find(static_cast<char>(c)) != std::string::npos;
    };
    for (int c = -1; c < 0x100; ++c) {
        EXPECT_EQ(is_space(c), has(spaces, c)) << c;
        if (c >= 0x80) continue;
        EXPECT_EQ(is_name_start(c), has(starts, c)) << c;
        EXPECT_EQ(is_name_char(c), has(names, c)) << c;
        if (c < 0) continue;
        const CharClass expected = has(spaces, c)       ? CLASS_SPACE
                                   : has(names, c)      ? CLASS_NAME
                                   : c < 32 || c == 127 ? CLASS_NONE
                                                        : CLASS_SYMBOL;
        EXPECT_EQ(charClassTable[c], expected) << c;
    }
    static_assert(sizeof charClassTable == 128, "a byte for each character");
    EXPECT_FALSE(is_space(0x3000));
    EXPECT_FALSE(is_space(0x110020));
}

TEST(CharClasses, Names) {
    const struct {
        std::u16string text;
        bool isName;
    } cases[] = {
        {u"", true},          {u"a", true},       {u":", true},        {u"a:b:c", true},
        {u"_-.9", true},      {u"日本語", true},  {u"データー", true}, {u"々", false},
        {u"佐々木", true},    {u"〇", true},      {u"ー", false},      {u"a\u00B7", true},
        {u"\u00B7", false},   {u"\u0660", false}, {u"a\u0660", true},  {u"\u0300", false},
        {u"e\u0301", true},   {u"9a", false},     {u"-a", false},      {u".a", false},
        {u"a b", false},      {u" a", false},     {u"a ", false},      {u"a/", false},
        {u"a\u3000b", false}, {u"Ａ", false},     {u"aＡ", false},     {u"ｱ", false},
        {u"a\uFFFE", false},  {u"\uFFFE", false}, {u"a\uFFFF", false}, {u"a\x01", false},
        {u"𠮷", false},       {u"a𠮷", false},    {u"漢\x7F", false},
    };
    for (const auto& test : cases) {
        std::vector<Unit> units(test.text.begin(), test.text.end());
        units.push_back(0);
        EXPECT_EQ(isName(units.data()), test.isName) << ::testing::PrintToString(test.text);
    }
}

}  // namespace
}  // namespace qvox

// The states of a string, its conversions, parts, assignments and comparisons.
#include <cstring>
#include <functional>
#include <sstream>
#include <utility>

#include <gtest/gtest.h>

#include "support/recorder.h"

namespace qvox_test {
namespace {

using qvox::Xstring;

const unsigned short units[] = {'a', '\r', '\n', 'b', '\r', 'c', 0, 'd', 0};  // two texts
const auto* const nullNarrow = static_cast<const char*>(nullptr);
const auto* const nullWide = static_cast<const unsigned short*>(nullptr);

TEST(Xstring, States) {
    const Xstring bulk(units, 8);
    const Xstring copyOfBulk(bulk);
    const struct {
        Xstring text;
        const char* shown;
        int length;
    } cases[] = {
        {Xstring(), "-", 0},
        {Xstring(nullNarrow), "-", 0},
        {Xstring(static_cast<const unsigned char*>(nullptr)), "-", 0},
        {Xstring(nullWide), "-", 0},
        {Xstring(nullWide, 3), "-", 0},
        {Xstring::Null, "-", 0},
        {Xstring(""), "''", 0},
        {Xstring(units + 6), "''", 0},
        {Xstring(units), "'a\\nb\\nc'", 5},
        {copyOfBulk, "'a\\r\\nb\\rc'", 6},
        {Xstring("a\r\nb\rc\nd"), "'a\\nb\\rc\\nd'", 7},
        {Xstring("\x88\x9F\xB1\x95\\~"), "'亜ｱ表~'", 4},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(quoted(test.text), test.shown);
        EXPECT_EQ(test.text.length(), test.length);
        EXPECT_EQ(test.text.data()[test.length], 0);
        EXPECT_EQ(test.text.c_str(), test.text.data());
        EXPECT_FALSE(test.text.isBulk());
    }
    EXPECT_TRUE(bulk.isBulk() && !bulk.isNull());
    EXPECT_EQ(bulk.length(), 8);
    EXPECT_EQ(bulk.data(), units);
    EXPECT_TRUE(Xstring(units, -1).isBulk() && Xstring(units, -1).length() == 0);

    Xstring itself(units + 7, 1);
    const Xstring& same = itself;
    itself = same;
    EXPECT_TRUE(itself == "d" && !itself.isBulk());
    for (const bool lent : {false, true}) {
        Xstring from = lent ? Xstring(units + 7, 1) : Xstring("d");
        const Xstring moved(std::move(from));
        EXPECT_TRUE(moved == "d" && moved.isBulk() == lent);
    }
}

TEST(Xstring, AssignAndAppend) {
    const Xstring null;
    const Xstring empty("");
    const Xstring x("x");
    const Xstring bulk(units + 3, 3);
    const struct {
        std::function<void(Xstring&)> change;
        const char* ofNull;
        const char* ofText;  // "t"
        const char* ofBulk;  // "c"
    } cases[] = {
        {[&](Xstring& s) { s = null; }, "-", "''", "''"},
        {[&](Xstring& s) { s = empty; }, "''", "''", "''"},
        {[&](Xstring& s) { s = x; }, "'x'", "'x'", "'x'"},
        {[&](Xstring& s) { s = bulk; }, "'b\\rc'", "'b\\rc'", "'b\\rc'"},
        {[&](Xstring& s) { s = units; }, "'a\\r\\nb\\rc'", "'a\\r\\nb\\rc'", "'a\\r\\nb\\rc'"},
        {[&](Xstring& s) { s = "a\r\n\xB1"; }, "'a\\nｱ'", "'a\\nｱ'", "'a\\nｱ'"},
        {[&](Xstring& s) { s += null; }, "-", "'t'", "'c'"},
        {[&](Xstring& s) { s += nullNarrow; }, "-", "'t'", "'c'"},
        {[&](Xstring& s) { s += nullWide; }, "-", "'t'", "'c'"},
        {[&](Xstring& s) { s += static_cast<unsigned short>(0); }, "-", "'t'", "'c'"},
        {[&](Xstring& s) { s += ""; }, "''", "'t'", "'c'"},
        {[&](Xstring& s) { s += empty; }, "''", "'t'", "'c'"},
        {[&](Xstring& s) { s += x; }, "'x'", "'tx'", "'cx'"},
        {[&](Xstring& s) { s += u'\u3042'; }, "'あ'", "'tあ'", "'cあ'"},
        {[&](Xstring& s) { s += units + 1; }, "'\\r\\nb\\rc'", "'t\\r\\nb\\rc'", "'c\\r\\nb\\rc'"},
        {[&](Xstring& s) { s += "\x82\xA0\r\n"; }, "'あ\\n'", "'tあ\\n'", "'cあ\\n'"},
        {[&](Xstring& s) { s += s; }, "-", "'tt'", "'cc'"},
        {[&](Xstring& s) { s += s.data(); }, "''", "'tt'", "'cc'"},
    };
    for (const auto& [change, ofNull, ofText, ofBulk] : cases) {
        const auto result = [&change = change](Xstring text) {
            change(text);
            return quoted(text);
        };
        EXPECT_EQ(result(null), ofNull) << ofText;
        EXPECT_EQ(result("t"), ofText);
        EXPECT_EQ(result(Xstring(units + 5, 1)), ofBulk);
    }
    EXPECT_EQ(quoted(x + bulk), "'xb\\rc'");
    EXPECT_EQ(quoted(null + null), "-");
    EXPECT_EQ(quoted(null + empty), "''");
}

// Where a character has no code it is a question mark, and each line feed is CR LF.
TEST(Xstring, Conversions) {
    const struct {
        const char16_t* text;
        const char* ascii;
        const char* sjis;
        const char* euc;
        const char* jis;
    } cases[] = {
        {u"", "", "", "", ""},
        {u"a\nb\r", "a\nb\r", "a\r\nb\r", "a\r\nb\r", "a\r\nb\r"},
        {u"亜ｱz", "\x9Cqz", "\x88\x9F\xB1z", "\xB0\xA1\x8E\xB1z", "0!\xB1z"},
        {u"\u301C\u2212\u00A2", "\x1C\x12\xA2", "\x81\x60\x81\x7C\x81\x91",
         "\xA1\xC1\xA1\xDD\xA1\xF1", "!A!]!q"},
        {u"\u00A5\u203E", "\xA5>", "\\~", "\\~", "\\~"},
        {u"\u00E9\U00020BB7", "\xE9\x42\xB7", "???", "???", "???"},
    };
    for (const auto& test : cases) {
        Xstring text("");
        for (const char16_t* unit = test.text; *unit != 0; ++unit) text += *unit;
        std::string buffer(static_cast<std::size_t>(2 * text.length() + 1), 'x');
        auto* const bytes = reinterpret_cast<unsigned char*>(buffer.data());
        const auto expect = [](const char* expected, const void* own, const void* given) {
            EXPECT_STREQ(static_cast<const char*>(own), expected);
            EXPECT_STREQ(static_cast<const char*>(given), expected);
        };
        expect(test.ascii, text.ascii_str(), text.ascii_str(buffer.data()));
        expect(test.sjis, text.sjis_str(), text.sjis_str(bytes));
        expect(test.sjis, text.os_str(), text.os_str(bytes));
        expect(test.euc, text.euc_str(), text.euc_str(bytes));
        expect(test.jis, text.jis_str(), text.jis_str(buffer.data()));
        EXPECT_EQ(buffer, test.jis + buffer.substr(std::strlen(test.jis)));
        std::ostringstream stream;
        stream << text;
        EXPECT_EQ(stream.str(), test.sjis);
        unsigned short copy[8];
        EXPECT_EQ(Xstring(text.unicode_str(copy), text.length()), text);
        EXPECT_EQ(copy[text.length()], 0);
        EXPECT_EQ(text.unicode_str(), text.data());
    }
}

TEST(Xstring, Parts) {
    const int most = 2147483647;
    const struct {
        int start;
        int count;
        const char* part;
    } cases[] = {{0, 4, "'abcd'"},     {1, 2, "'bc'"},     {-2, 3, "'a'"},     {2, 100, "'cd'"},
                 {9, 1, "''"},         {1, -1, "''"},      {1, most, "'bcd'"}, {-1, 5, "'abcd'"},
                 {-1, most, "'abcd'"}, {most, most, "''"}, {-most, most, "''"}};
    const unsigned short abcd[] = {'a', 'b', 'c', 'd', 0};
    for (const auto& test : cases) {
        EXPECT_EQ(quoted(Xstring("abcd").substr(test.start, test.count)), test.part);
        EXPECT_EQ(quoted(Xstring(abcd, 4).substr(test.start, test.count)), test.part);
        EXPECT_EQ(quoted(Xstring().substr(test.start, test.count)), "''");
    }
    const auto none = static_cast<unsigned int>(-1);
    const struct {
        Xstring text;
        const char* part;
        unsigned int place;
    } finds[] = {{"xz\x82\xA0xy", "\x82\xA0x", 2},
                 {"xxy", "xy", 1},
                 {"x", "", 0},
                 {{}, "", 0},
                 {{}, "a", none},
                 {"a", nullptr, 0}};
    for (const auto& [text, part, place] : finds) EXPECT_EQ(text.find(part), place);
    EXPECT_EQ(Xstring(abcd, 3).find("cd"), none);
    EXPECT_EQ(Xstring(abcd, 3).find("bc"), 1u);
}

TEST(Xstring, Comparison) {
    const Xstring null;
    const Xstring empty("");
    EXPECT_TRUE(null == nullNarrow && null != "" && null == empty);
    EXPECT_TRUE(empty == "" && empty != nullNarrow);
    EXPECT_TRUE(Xstring("ab") == "ab");
    for (const char* other : {"a", "abc", "", "aB", "b"}) EXPECT_TRUE(Xstring("ab") != other);
    EXPECT_TRUE(Xstring("\xB1") != "\xB1" && Xstring("\xB1") == Xstring("\xB1"));
    EXPECT_TRUE(Xstring("ab") != Xstring("a"));
}

}  // namespace
}  // namespace qvox_test

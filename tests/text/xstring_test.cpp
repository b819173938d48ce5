// The states of a string, its conversions, parts, assignments and comparisons.
#include <cstring>
#include <functional>
#include <sstream>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/recorder.h"

namespace qvox_test {
namespace {

using namespace std::string_view_literals;
using qvox::Xstring;

static_assert(sizeof(Xstring) <= 16);

const unsigned short units[] = {'a', '\r', '\n', 'b', '\r', 'c', 0, 'd', 0};  // two texts
const auto* const nullNarrow = static_cast<const char*>(nullptr);
const auto* const nullWide = static_cast<const unsigned short*>(nullptr);

TEST(Xstring, States) {
    const Xstring bulk(units, 8);
    const Xstring copyOfBulk(bulk);
    const std::tuple<Xstring, const char*, int> cases[] = {
        {Xstring(), "-", 0},
        {Xstring(nullNarrow), "-", 0},
        {Xstring(static_cast<const unsigned char*>(nullptr)), "-", 0},
        {Xstring(nullWide), "-", 0},
        {Xstring(static_cast<const char16_t*>(nullptr)), "-", 0},
        {Xstring(nullWide, 3), "''", 0},
        {Xstring(nullWide, -1), "-", 0},
        {Xstring::Null, "-", 0},
        {Xstring(""), "''", 0},
        {Xstring(units + 6), "''", 0},
        {Xstring(units), "'a\\nb\\nc'", 5},
        {copyOfBulk, "'a\\r\\nb\\rc'", 6},
        {Xstring("a\r\nb\rc\nd"), "'a\\nb\\rc\\nd'", 7},
        {Xstring("\x88\x9F\xB1\x95\\~"), "'亜ｱ表~'", 4},
        {Xstring(u"a\r\nb\rc"), "'a\\nb\\nc'", 5},
        {Xstring(u"a\r\nb\0c"sv), "'a\\nb'", 3},
        {Xstring(std::u16string(u"亜")), "'亜'", 1},
        {Xstring(std::u16string_view()), "''", 0},
        {Xstring::fromUtf8(""), "''", 0},
        {Xstring::fromUtf8("é\r\n\xF0\xA0\xAE\xB7\0x"sv), "'é\\r\\n𠮷'", 5},
        {Xstring::fromUtf8("\xC1\x81\xE0\x9F\xBF|\xED\xA0\x80|\xF4\x90\x80\x80|\xE3\x81|\xFF"),
         "'\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD|\uFFFD\uFFFD\uFFFD|\uFFFD\uFFFD\uFFFD\uFFFD|\uFFFD\uFFFD|"
         "\uFFFD'",
         19},
    };
    for (const auto& [text, shown, length] : cases) {
        EXPECT_EQ(quoted(text), shown);
        EXPECT_EQ(text.length(), length);
        EXPECT_TRUE(text.data()[length] == 0 && text.c_str() == text.data() && !text.isBulk());
    }
    EXPECT_TRUE(bulk.isBulk() && !bulk.isNull() && bulk.length() == 8 && bulk.data() == units);
    EXPECT_TRUE(Xstring(units, -1).isBulk() && Xstring(units, -1).length() == 0);

    Xstring itself(units + 7, 1);
    const Xstring& same = itself;
    itself = same;
    EXPECT_TRUE(itself == "d" && !itself.isBulk());
}

// What is copied or moved out of a string is a string of its own, whoever owned the text.
TEST(Xstring, OwnsWhatItTakes) {
    unsigned short buffer[] = {'d', 'e', 0};
    char16_t document[] = u"<a b='d'>de</a>";
    qvox::DOMParser parser;
    qvox::Document* const tree = parser.parse(reinterpret_cast<unsigned short*>(document));
    qvox::Element* const element = tree->getDocumentElement();
    const Xstring& value = element->getAttribute("b");
    const Xstring& text = element->getFirstChild()->getNodeValue();
    EXPECT_FALSE(value.isBulk() || text.isBulk());

    std::vector<Xstring> taken;
    taken.push_back(Xstring(buffer, 2));
    taken.emplace_back("de");
    taken.push_back(std::move(const_cast<Xstring&>(text)));
    taken.push_back(text);
    taken.emplace_back() = Xstring(buffer, 2);
    taken.emplace_back() = text;
    const Xstring second = taken[1];
    taken.emplace_back("x") = second;
    taken[1] = second;  // which shares its text
    taken[1] += "f";
    Xstring longer(std::move(taken[1]));
    taken.emplace_back() = std::move(longer);
    taken.push_back(value);
    buffer[0] = 'x';
    parser.free(tree);
    std::string all;
    for (const Xstring& one : taken) all += one.isBulk() ? "bulk" : quoted(one);
    EXPECT_EQ(all, "'de'-'de''de''de''de''de''def''d'");
}

TEST(Xstring, AssignAndAppend) {
    const Xstring null;
    const Xstring empty("");
    const Xstring x("x");
    const Xstring bulk(units + 3, 3);
    // A change, and what it makes of a null text, of "t" and of a bulk "c".
    const std::tuple<std::function<void(Xstring&)>, const char*, const char*, const char*> cases[] =
        {
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
            {[&](Xstring& s) { s += units + 1; }, "'\\r\\nb\\rc'", "'t\\r\\nb\\rc'",
             "'c\\r\\nb\\rc'"},
            {[&](Xstring& s) { s += "\x82\xA0\r\n"; }, "'あ\\n'", "'tあ\\n'", "'cあ\\n'"},
            {[&](Xstring& s) { s = u"a\r"; }, "'a\\r'", "'a\\r'", "'a\\r'"},
            {[&](Xstring& s) { s += u"a\r\0b"sv; }, "'a\\r'", "'ta\\r'", "'ca\\r'"},
            {[&](Xstring& s) { s = Xstring(); }, "-", "''", "''"},
            {[&](Xstring& s) { s = (s += u"xyz").data() + 1; }, "'yz'", "'xyz'", "'xyz'"},
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
    // A text, and it in ASCII, Shift_JIS, EUC-JP, JIS and UTF-8.
    const char* const cases[][6] = {
        {"", "", "", "", "", ""},
        {"a\nb\r", "a\nb\r", "a\r\nb\r", "a\r\nb\r", "a\r\nb\r", "a\nb\r"},
        {"亜ｱz", "\x9Cqz", "\x88\x9F\xB1z", "\xB0\xA1\x8E\xB1z", "0!\xB1z", "亜ｱz"},
        {"〜−¢", "\x1C\x12\xA2", "\x81\x60\x81\x7C\x81\x91", "\xA1\xC1\xA1\xDD\xA1\xF1", "!A!]!q",
         "〜−¢"},
        {"¥‾", "\xA5>", "\\~", "\\~", "\\~", "¥‾"},
        {"é𠮷", "\xE9\x42\xB7", "???", "???", "???", "é𠮷"},
    };
    for (const auto& [source, ascii, sjis, euc, jis, utf8] : cases) {
        Xstring text;
        text = Xstring::fromUtf8(source).u16_str();
        std::string buffer(static_cast<std::size_t>(2 * text.length() + 1), 'x');
        auto* const bytes = reinterpret_cast<unsigned char*>(buffer.data());
        const auto expect = [](const char* expected, const void* own, const void* given) {
            EXPECT_STREQ(static_cast<const char*>(own), expected);
            EXPECT_STREQ(static_cast<const char*>(given), expected);
        };
        expect(ascii, text.ascii_str(), text.ascii_str(buffer.data()));
        expect(sjis, text.sjis_str(), text.sjis_str(bytes));
        expect(sjis, text.os_str(), text.os_str(bytes));
        expect(euc, text.euc_str(), text.euc_str(bytes));
        expect(jis, text.jis_str(), text.jis_str(buffer.data()));
        EXPECT_EQ(buffer, jis + buffer.substr(std::strlen(jis)));
        std::ostringstream stream;
        stream << text;
        EXPECT_EQ(stream.str(), sjis);
        unsigned short copy[8];
        EXPECT_EQ(Xstring(text.unicode_str(copy), text.length()), text);
        EXPECT_EQ(copy[text.length()], 0);
        EXPECT_EQ(text.unicode_str(), text.data());
        EXPECT_EQ(text.utf8(), utf8);
        EXPECT_EQ(std::u16string(text.view()), text.u16_str());
    }
    const unsigned short halves[] = {0xDC00, 'a', 0xD800, 0};
    EXPECT_EQ(Xstring(halves).utf8(), "\uFFFDa\uFFFD");
}

TEST(Xstring, Parts) {
    const unsigned short abcd[] = {'a', 'b', 'c', 'd', 0};
    const int most = 2147483647;
    for (const auto& [start, count, part] : {std::tuple(0, 4, "'abcd'"),
                                             {1, 2, "'bc'"},
                                             {-2, 3, "'a'"},
                                             {2, 100, "'cd'"},
                                             {9, 1, "''"},
                                             {1, -1, "''"},
                                             {1, most, "'bcd'"},
                                             {-1, 5, "'abcd'"},
                                             {-1, most, "'abcd'"},
                                             {most, most, "''"},
                                             {-most, most, "''"}}) {
        EXPECT_EQ(quoted(Xstring("abcd").substr(start, count)), part);
        EXPECT_EQ(quoted(Xstring(abcd, 4).substr(start, count)), part);
        EXPECT_EQ(quoted(Xstring().substr(start, count)), "''");
    }
    EXPECT_EQ(Xstring("xz\x82\xA0xy").find("\x82\xA0x"), 2u);
    EXPECT_EQ(Xstring("xxy").find("xy"), 1u);
    EXPECT_EQ(Xstring("x").find("") + Xstring().find("") + Xstring("a").find(nullNarrow), 0u);
    EXPECT_TRUE(Xstring().find("a") == -1U && Xstring(abcd, 3).find("cd") == -1U);
    EXPECT_TRUE(Xstring(abcd, 3).find("bc") == 1u && Xstring(abcd).find(u"cd") == 2u);
}

TEST(Xstring, Comparison) {
    const Xstring null;
    const Xstring empty("");
    EXPECT_TRUE(null == nullNarrow && null != "" && null == empty);
    EXPECT_TRUE(empty == "" && empty != nullNarrow);
    EXPECT_TRUE(Xstring("ab") == "ab" && null == nullptr && empty != nullptr);
    EXPECT_TRUE(Xstring("ab") == u"ab" && Xstring("ab") == std::u16string(u"ab"));
    EXPECT_TRUE(Xstring("ab") != u"a" && Xstring("ab") != u"a"sv && null != u"" && null == u""sv);
    for (const char* other : {"a", "abc", "", "aB", "b"}) EXPECT_TRUE(Xstring("ab") != other);
    EXPECT_TRUE(Xstring("\xB1") != "\xB1" && Xstring("\xB1") == Xstring("\xB1"));
    EXPECT_TRUE(Xstring("O") != "\xB1");  // which is -'O' as a signed byte
    EXPECT_TRUE(Xstring("ab") != Xstring("a"));
}

}  // namespace
}  // namespace qvox_test

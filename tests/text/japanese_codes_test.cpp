#include "text/japanese_codes.h"

#include <map>

#include <gtest/gtest.h>

#include "platform/iconv_codec.h"

namespace qvox {
namespace {

template <std::size_t Count>
void expect_codes(int (*convert)(int), const int (&codes)[Count][2]) {
    for (const auto& [from, to] : codes) EXPECT_EQ(convert(from), to) << std::hex << from;
}

// No byte of a result runs over into the other or beyond it, whatever the bytes are.
TEST(JapaneseCodes, Arithmetic) {
    const int toEuc[][2] = {{0, 0},           {0x7F, 0x7F},     {0xDF, 0x8EDF},   {0xF040, 0xFFA1},
                            {0xF09F, 0xA1},   {0xFCFF, 0x1801}, {0x817F, 0xA1DF}, {0x81FF, 0xA201},
                            {0x817E, 0xA1DF}, {0x8180, 0xA1E0}, {0x819F, 0xA2A1}, {0x9FFC, 0xDEFE},
                            {0xE040, 0xDFA1}, {0xEEFC, 0xFCFE}};
    const int toSjis[][2] = {{0x8E41, 0x41},   {0x8EDF, 0xDF},   {0xA100, 0x819F}, {0xA200, 0x81FE},
                             {0xFFFF, 0xF09F}, {0xB0, 0x30AE},   {0xA1A1, 0x8140}, {0xA1DF, 0x817E},
                             {0xA1E0, 0x8180}, {0xA2A1, 0x819F}, {0xDEFE, 0x9FFC}, {0xDFA1, 0xE040},
                             {0xFCFE, 0xEEFC}};
    expect_codes(sjis_to_euc, toEuc);
    expect_codes(euc_to_sjis, toSjis);
}

TEST(JapaneseCodes, ToUnicode) {
    const int sjis[][2] = {{'A', 'A'},  {0xB1, 0xFF71}, {0x889F, 0x4E9C}, {0x81, 0},  {0x8120, 0},
                           {0x80FF, 0}, {0x18140, 0},   {-1, 0},          {-32448, 0}};
    const int euc[][2] = {{0xB0A1, 0x4E9C}, {0x8EB1, 0xFF71}, {0x8EE0, 0},      {0x8FB0, 0},
                          {0xADA1, 0x2460}, {0xA9A1, 0},      {0xB0, 0},        {0xB041, 0},
                          {0xB242, 0x9662}, {0x8E41, 'A'},    {0xA13C, 0x22A5}, {0xFFFE, 0xE05D}};
    const int jis[][2] = {{0x3021, 0x4E9C}, {0xB1, 0xFF71},  {0xB0A1, 0x4E9C}, {0xE0, 0},
                          {0x80, 0},        {0x3020, 0},     {0x2D21, 0x2460}, {0x2921, 0},
                          {0x3220, 0x5FDC}, {0x7F21, 0xE000}};
    expect_codes(sjis_to_unicode, sjis);
    expect_codes(euc_to_unicode, euc);
    expect_codes(jis_to_unicode, jis);
}

TEST(JapaneseCodes, FromUnicode) {
    const int cases[][4] = {
        // unit, Shift_JIS, EUC-JP, JIS
        {'A', 'A', 'A', 'A'},
        {0x4E9C, 0x889F, 0xB0A1, 0x3021},
        {0xFF9F, 0xDF, 0x8EDF, 0xDF},
        {0x301C, 0x8160, 0xA1C1, 0x2141},
        {0x00A5, '\\', '\\', '\\'},
        {0x2460, 0x8740, 0xADA1, 0x2D21},
        {0x2170, 0xFA40, 0xFCF1, 0x7C71},  // IBM's rows, which only Shift_JIS has
        {0xFFE4, 0xFA55, 0xFCFC, 0x7C7C},
        {0x7E8A, 0xFA5C, 0xF9A1, 0x7921},
        {0x9AD9, 0xFBFC, 0xFCE2, 0x7C62},
        {0x9ED1, 0xFC4B, 0xFCEE, 0x7C6E},
        {0xE000, 0xF040, 0xFFA1, 0x7F21},
        {0xE05D, 0xF09E, 0xFFFE, 0x7F7E},
        {0xE05E, 0xF09F, '?', '?'},
        {0xE757, 0xF9FC, '?', '?'},
        {0x00E9, '?', '?', '?'},
        {0x10000, '?', '?', '?'},
        {-1, '?', '?', '?'},
        {0, 0, 0, 0}};
    for (const auto& [unit, sjis, euc, jis] : cases) {
        EXPECT_EQ(unicode_to_sjis(unit), sjis) << std::hex << unit;
        EXPECT_EQ(unicode_to_euc(unit), euc) << std::hex << unit;
        EXPECT_EQ(unicode_to_jis(unit), jis) << std::hex << unit;
    }
}

// All that Shift_JIS can write comes back from each encoding, but for the user-defined characters,
// of which the other two have a row only.
TEST(JapaneseCodes, NothingIsLostOnTheWay) {
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        const int sjis = unicode_to_sjis(unit);
        const int euc = unicode_to_euc(unit);
        const int jis = unicode_to_jis(unit);
        if (sjis == '?' || (unit >= 0xE05E && unit < 0xF900)) {
            ASSERT_TRUE(euc == '?' && jis == '?') << std::hex << unit;
            continue;
        }
        const int back = sjis_to_unicode(sjis);
        ASSERT_EQ(back < 0x80 ? euc : euc_to_unicode(euc), back) << std::hex << unit;
        ASSERT_EQ(back < 0x80 ? jis : jis_to_unicode(jis), back) << std::hex << unit;
        // A variant comes back as the code page's own character, and that one as itself.
        ASSERT_EQ(unicode_to_sjis(back), sjis) << std::hex << unit;
    }
}

// All of JIS X 0208. The C library's EUC-JP takes six of its symbols for the variants.
TEST(JapaneseCodes, AgreesWithTheSystemOnEuc) {
    const std::map<int, int> ours = {{0xA1C1, 0xFF5E}, {0xA1C2, 0x2225}, {0xA1DD, 0xFF0D},
                                     {0xA1F1, 0xFFE0}, {0xA1F2, 0xFFE1}, {0xA2CC, 0xFFE2}};
    const qvox_test::IconvCodec system("EUC-JP");
    if (!system.is_open()) GTEST_SKIP() << "no converter to compare with";
    int characters = 0;
    for (int first = 0xA1; first <= 0xFE; ++first) {
        for (int second = 0xA1; second <= 0xFE; ++second) {
            const int code = first * 256 + second;
            const int theirs = system.decode(code);
            if (theirs == 0) continue;
            ++characters;
            const int expected = ours.count(code) != 0 ? ours.at(code) : theirs;
            ASSERT_EQ(euc_to_unicode(code), expected) << std::hex << code;
            ASSERT_EQ(unicode_to_euc(theirs), code) << std::hex << theirs;
            ASSERT_EQ(jis_to_unicode(code & 0x7F7F), expected) << std::hex << code;
            ASSERT_EQ(unicode_to_jis(theirs), code & 0x7F7F) << std::hex << theirs;
        }
    }
    EXPECT_EQ(characters, 6879);
}

}  // namespace
}  // namespace qvox

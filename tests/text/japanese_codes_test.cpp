#include "text/japanese_codes.h"

#include <gtest/gtest.h>

#include "text/hash.h"

namespace qvox {
namespace {

template <std::size_t Count>
void expect_codes(int (*convert)(int), const int (&codes)[Count][2]) {
    for (const auto& [from, to] : codes) EXPECT_EQ(convert(from), to) << std::hex << from;
}

// No byte of a result runs over into the other or beyond it, whatever the bytes are.
TEST(JapaneseCodes, Arithmetic) {
    const int toEuc[][2] = {{0x7F, 0x7F},     {0xDF, 0x8EDF},   {0xF09F, 0xA1},   {0x817F, 0xA1DF},
                            {0x817E, 0xA1DF}, {0x8180, 0xA1E0}, {0x9FFC, 0xDEFE}, {0xE040, 0xDFA1}};
    const int toSjis[][2] = {{0x8E41, 0x41},   {0x8EDF, 0xDF},   {0xA100, 0x819F},
                             {0xFFFF, 0xF09F}, {0xA1DF, 0x817E}, {0xA1E0, 0x8180},
                             {0xDEFE, 0x9FFC}, {0xDFA1, 0xE040}};
    expect_codes(sjis_to_euc, toEuc);
    expect_codes(euc_to_sjis, toSjis);
    EXPECT_EQ(hash_of(sjis_to_euc), 1746120291221616139U);
    EXPECT_EQ(hash_of(euc_to_sjis), 16898025896255951872U);
}

// All codes of JIS X 0208 are as the GNU C library's converter for EUC-JP has them, but for six
// symbols, for which the code page has variants.
TEST(JapaneseCodes, ToUnicode) {
    const int sjis[][2] = {{0xB1, 0xFF71}, {0x889F, 0x4E9C}, {0x8120, 0}, {0x18140, 0}, {-1, 0}};
    const int euc[][2] = {{0xB0A1, 0x4E9C}, {0x8EB1, 0xFF71}, {0x8FB0, 0},      {0xADA1, 0x2460},
                          {0xB242, 0x9662}, {0x8E41, 'A'},    {0xA1C1, 0xFF5E}, {0xFFFE, 0xE05D}};
    const int jis[][2] = {{0x3021, 0x4E9C}, {0xB1, 0xFF71}, {0xB0A1, 0x4E9C}, {0xE0, 0},
                          {0x2D21, 0x2460}, {0x2921, 0},    {0x3220, 0x5FDC}, {0x7F21, 0xE000}};
    expect_codes(sjis_to_unicode, sjis);
    expect_codes(euc_to_unicode, euc);
    expect_codes(jis_to_unicode, jis);
    EXPECT_EQ(hash_of(sjis_to_unicode), 13918881293421769076U);
    EXPECT_EQ(hash_of(euc_to_unicode), 12437050860970744288U);
    EXPECT_EQ(hash_of(jis_to_unicode), 6369751206546151464U);
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
        {0x2170, 0xFA40, 0xFCF1, 0x7C71},  // of IBM's rows, which only Shift_JIS has
        {0xE000, 0xF040, 0xFFA1, 0x7F21},
        {0xE05D, 0xF09E, 0xFFFE, 0x7F7E},
        {0xE05E, 0xF09F, '?', '?'},
        {0x00E9, '?', '?', '?'},
        {0x10000, '?', '?', '?'},
        {-1, '?', '?', '?'}};
    for (const auto& [unit, sjis, euc, jis] : cases) {
        EXPECT_EQ(unicode_to_sjis(unit), sjis) << std::hex << unit;
        EXPECT_EQ(unicode_to_euc(unit), euc) << std::hex << unit;
        EXPECT_EQ(unicode_to_jis(unit), jis) << std::hex << unit;
    }
    EXPECT_EQ(hash_of(unicode_to_sjis), 3455072726097914762U);
    EXPECT_EQ(hash_of(unicode_to_euc), 6940239436150667156U);
    EXPECT_EQ(hash_of(unicode_to_jis), 4352852814538651156U);
}

}  // namespace
}  // namespace qvox

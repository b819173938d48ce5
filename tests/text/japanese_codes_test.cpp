#include "text/japanese_codes.h"

#include <gtest/gtest.h>

#include "platform/iconv_codec.h"

namespace qvox {
namespace {

bool is_private_use(int unit) { return unit >= 0xE000 && unit < 0xF900; }

TEST(JapaneseCodes, ShiftJisAndEucByArithmetic) {
    const struct {
        int sjis;
        int euc;
    } pairs[] = {
        {0x8140, 0xA1A1}, {0x817E, 0xA1DF}, {0x8180, 0xA1E0}, {0x819E, 0xA1FE}, {0x819F, 0xA2A1},
        {0x81FC, 0xA2FE}, {0x889F, 0xB0A1}, {0x9F9E, 0xDDFE}, {0x9F9F, 0xDEA1}, {0x9FFC, 0xDEFE},
        {0xE040, 0xDFA1}, {0xE09F, 0xE0A1}, {0xEAA4, 0xF4A6}, {0xED40, 0xF9A1}, {0xEEFC, 0xFCFE},
        {0xA1, 0x8EA1},   {0xDF, 0x8EDF},
    };
    for (const auto& pair : pairs) {
        EXPECT_EQ(sjis_to_euc(pair.sjis), pair.euc) << std::hex << pair.sjis;
        EXPECT_EQ(euc_to_sjis(pair.euc), pair.sjis) << std::hex << pair.euc;
    }
}

// No byte of a result runs over into the other or beyond it, whatever the bytes are.
TEST(JapaneseCodes, ArithmeticOnBytesThatAreNoCharacter) {
    const struct {
        int (*convert)(int);
        int from;
        int to;
    } cases[] = {
        {sjis_to_euc, 0x00, 0x00},     {sjis_to_euc, 0x41, 0x41},     {sjis_to_euc, 0x7F, 0x7F},
        {sjis_to_euc, 0xF040, 0xFFA1}, {sjis_to_euc, 0xF09F, 0x00A1}, {sjis_to_euc, 0xFCFF, 0x1801},
        {sjis_to_euc, 0x817F, 0xA1DF}, {sjis_to_euc, 0x81FF, 0xA201}, {euc_to_sjis, 0x8E41, 0x41},
        {euc_to_sjis, 0xA100, 0x819F}, {euc_to_sjis, 0xA200, 0x81FE}, {euc_to_sjis, 0xFFFF, 0xF09F},
        {euc_to_sjis, 0xB0, 0x30AE},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(test.convert(test.from), test.to) << std::hex << test.from;
    }
}

TEST(JapaneseCodes, ToUnicode) {
    const struct {
        int (*convert)(int);
        int code;
        int unit;
    } cases[] = {
        {sjis_to_unicode, 'A', 'A'},       {sjis_to_unicode, 0xB1, 0xFF71},
        {sjis_to_unicode, 0x889F, 0x4E9C}, {sjis_to_unicode, 0xF9FC, 0xE757},
        {sjis_to_unicode, 0x81, 0},        {sjis_to_unicode, 0x8120, 0},
        {sjis_to_unicode, 0x80FF, 0},      {sjis_to_unicode, 0x18140, 0},
        {sjis_to_unicode, -1, 0},          {sjis_to_unicode, -32448, 0},
        {euc_to_unicode, 0xB0A1, 0x4E9C},  {euc_to_unicode, 0x8EB1, 0xFF71},
        {euc_to_unicode, 0x8EE0, 0},       {euc_to_unicode, 0x8FB0, 0},
        {euc_to_unicode, 0xADA1, 0x2460},  {euc_to_unicode, 0xA9A1, 0},
        {euc_to_unicode, 0xB0, 0},         {euc_to_unicode, 0xB041, 0},
        {jis_to_unicode, 0x3021, 0x4E9C},  {jis_to_unicode, 0xB1, 0xFF71},
        {jis_to_unicode, 0xB0A1, 0x4E9C},  {jis_to_unicode, 0xE0, 0},
        {jis_to_unicode, 0x80, 0},         {jis_to_unicode, 0x3020, 0},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(test.convert(test.code), test.unit) << std::hex << test.code;
    }
}

TEST(JapaneseCodes, FromUnicode) {
    const struct {
        int unit;
        int sjis;
        int euc;
        int jis;
    } cases[] = {
        {'A', 'A', 'A', 'A'},
        {0x7F, 0x7F, 0x7F, 0x7F},
        {0x4E9C, 0x889F, 0xB0A1, 0x3021},
        {0xFF61, 0xA1, 0x8EA1, 0xA1},
        {0xFF9F, 0xDF, 0x8EDF, 0xDF},
        {0x301C, 0x8160, 0xA1C1, 0x2141},
        {0x00A5, '\\', '\\', '\\'},
        {0x2460, 0x8740, 0xADA1, 0x2D21},
        {0x2170, 0xFA40, 0xFCF1, 0x7C71},  // IBM's rows, which only Shift_JIS has
        {0x2179, 0xFA49, 0xFCFA, 0x7C7A},
        {0xFFE4, 0xFA55, 0xFCFC, 0x7C7C},
        {0xFF02, 0xFA57, 0xFCFE, 0x7C7E},
        {0x7E8A, 0xFA5C, 0xF9A1, 0x7921},
        {0x9AD9, 0xFBFC, 0xFCE2, 0x7C62},
        {0x9ED1, 0xFC4B, 0xFCEE, 0x7C6E},
        {0xE000, 0xF040, '?', '?'},
        {0xE757, 0xF9FC, '?', '?'},
        {0x00E9, '?', '?', '?'},
        {0xD800, '?', '?', '?'},
        {0x10000, '?', '?', '?'},
        {-1, '?', '?', '?'},
        {0, 0, 0, 0},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(unicode_to_sjis(test.unit), test.sjis) << std::hex << test.unit;
        EXPECT_EQ(unicode_to_euc(test.unit), test.euc) << std::hex << test.unit;
        EXPECT_EQ(unicode_to_jis(test.unit), test.jis) << std::hex << test.unit;
    }
}

// All that Shift_JIS can write comes back from each encoding, but for the user-defined characters,
// which the other two don't have.
TEST(JapaneseCodes, NothingIsLostOnTheWay) {
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        const int sjis = unicode_to_sjis(unit);
        const int euc = unicode_to_euc(unit);
        const int jis = unicode_to_jis(unit);
        if (sjis == '?' || is_private_use(unit)) {
            ASSERT_EQ(euc, '?') << std::hex << unit;
            ASSERT_EQ(jis, '?') << std::hex << unit;
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
    const struct {
        int code;
        int ours;
    } differences[] = {
        {0xA1C1, 0xFF5E}, {0xA1C2, 0x2225}, {0xA1DD, 0xFF0D},
        {0xA1F1, 0xFFE0}, {0xA1F2, 0xFFE1}, {0xA2CC, 0xFFE2},
    };
    const qvox_test::IconvCodec system("EUC-JP");
    if (!system.is_open()) GTEST_SKIP() << "no converter to compare with";
    int characters = 0;
    for (int first = 0xA1; first <= 0xFE; ++first) {
        for (int second = 0xA1; second <= 0xFE; ++second) {
            const int code = first * 256 + second;
            const int theirs = system.decode(code);
            if (theirs == 0) continue;
            ++characters;
            int expected = theirs;
            for (const auto& difference : differences) {
                if (difference.code == code) expected = difference.ours;
            }
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

#include "platform/code_page.h"

#include <gtest/gtest.h>

#include "platform/iconv_codec.h"

namespace qvox {
namespace {

unsigned encode(int unit) {
    return static_cast<unsigned>(code_page_from_unit(static_cast<unsigned>(unit)));
}

// The whole table in both directions. There is no exception: what we accept beyond the code page
// when writing, the C library accepts too.
TEST(CodePage, ReadsAndWritesWhatTheSystemDoes) {
    const qvox_test::IconvCodec system("CP932");
    if (!system.is_open()) GTEST_SKIP() << "no converter to compare with";
    for (unsigned first = 0; first < 0x100; ++first) {
        ASSERT_EQ(code_page_single_to_unit(first), system.decode(static_cast<int>(first)));
        for (unsigned second = 0; second < 0x100; ++second) {
            ASSERT_EQ(code_page_pair_to_unit(first, second),
                      system.decode_pair(static_cast<int>(first), static_cast<int>(second)))
                << std::hex << first << ' ' << second;
        }
    }
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        ASSERT_EQ(encode(unit), static_cast<unsigned>(system.encode(unit))) << std::hex << unit;
    }
}

// Each plane, where several codes have the character the one that is written, and the variants
// that are written as the code page's own character.
TEST(CodePage, SomeByThemselves) {
    const struct {
        int unit;
        unsigned written;
        unsigned read = written;
    } cases[] = {
        {'\\', 0x5C},
        {0xFF61, 0xA1},
        {0x3000, 0x8140},
        {0xFF5E, 0x8160},
        {0x3042, 0x82A0},
        {0x4E9C, 0x889F},
        {0xE757, 0xF9FC},
        {0x9ED1, 0xFC4B},
        {0x2252, 0x81E0, 0x8790},
        {0x2160, 0x8754, 0xFA4A},
        {0x2235, 0x81E6, 0xFA5B},
        {0xFFE2, 0x81CA, 0xEEF9},
        {0x7E8A, 0xFA5C, 0xED40},
        {0x301C, 0x8160, 0},
        {0x2212, 0x817C, 0},
        {0x00A5, 0x5C, 0},
        {0x00E9, '?', 0},
        {0xD800, '?', 0},
        {0xE758, '?', 0},
        {0x10000, '?', 0},
        {-1, '?', 0},
    };
    for (const auto& [unit, written, read] : cases) {
        EXPECT_EQ(encode(unit), written) << std::hex << unit;
        if (read == 0) continue;
        EXPECT_EQ(read < 0x100 ? code_page_single_to_unit(read)
                               : code_page_pair_to_unit(read >> 8, read & 0xFF),
                  unit);
    }
    for (const unsigned single : {0x80U, 0x81U, 0xFDU, 0x100U, ~0U}) {
        EXPECT_EQ(code_page_single_to_unit(single), 0) << single;
    }
    const unsigned pairs[][2] = {{0x81, 0x7F}, {0x81, 0xFD}, {0x80, 0x40},  {0xA1, 0x40},
                                 {0xFD, 0x40}, {0xEB, 0x40}, {0x181, 0x40}, {0x81, 0x140},
                                 {~0U, 0x40},  {0x81, ~0U}};
    for (const auto& [lead, trail] : pairs) EXPECT_EQ(code_page_pair_to_unit(lead, trail), 0);
}

}  // namespace
}  // namespace qvox

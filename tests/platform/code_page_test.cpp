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

// Each plane, the variants that are written as the code page's own character, and several codes of
// one character.
TEST(CodePage, SomeByThemselves) {
    const int cases[][2] = {{'\\', 0x5C},     {0xFF61, 0xA1},   {0x3000, 0x8140}, {0x3042, 0x82A0},
                            {0x4E9C, 0x889F}, {0xE757, 0xF9FC}, {0x9ED1, 0xFC4B}, {0x2252, 0x81E0},
                            {0x2160, 0x8754}, {0x7E8A, 0xFA5C}, {0x301C, 0x8160}, {0x2212, 0x817C},
                            {0x00A5, 0x5C},   {0x00E9, '?'},    {0xD800, '?'},    {0xE758, '?'},
                            {0x10000, '?'},   {-1, '?'}};
    for (const auto& [unit, code] : cases) {
        EXPECT_EQ(encode(unit), static_cast<unsigned>(code)) << std::hex << unit;
    }
    for (const unsigned single : {0x80U, 0x81U, 0xFDU, 0x100U, ~0U}) {
        EXPECT_EQ(code_page_single_to_unit(single), 0) << single;
    }
    const unsigned pairs[][3] = {{0x81, 0x7F, 0},     {0x81, 0xFD, 0},      {0x80, 0x40, 0},
                                 {0xA1, 0x40, 0},     {0xFD, 0x40, 0},      {0xEB, 0x40, 0},
                                 {0x181, 0x40, 0},    {0x81, 0x140, 0},     {~0U, 0x40, 0},
                                 {0x81, ~0U, 0},      {0x87, 0x90, 0x2252}, {0xFA, 0x4A, 0x2160},
                                 {0xEE, 0xF9, 0xFFE2}};
    for (const auto& [lead, trail, unit] : pairs) {
        EXPECT_EQ(code_page_pair_to_unit(lead, trail), static_cast<int>(unit));
    }
}

}  // namespace
}  // namespace qvox

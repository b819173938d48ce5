#include "platform/code_page.h"

#include <gtest/gtest.h>

#include "text/hash.h"

namespace qvox {
namespace {

int decoded_pair(int code) {
    return code_page_pair_to_unit(static_cast<unsigned>(code) >> 8U,
                                  static_cast<unsigned>(code) & 0xFFU);
}
int decoded_single(int code) { return code_page_single_to_unit(static_cast<unsigned>(code)); }
int encoded(int unit) { return code_page_from_unit(static_cast<unsigned>(unit)); }

// As the GNU C library's converter for CP932 has each code and each unit. There is no exception:
// what we accept beyond the code page when writing, that accepts too.
TEST(CodePage, AllOfIt) {
    EXPECT_EQ(hash_of(decoded_single), 7268162616316542432U);
    EXPECT_EQ(hash_of(decoded_pair), 12261206230765502996U);
    EXPECT_EQ(hash_of(encoded), 3455072726097914762U);
}

// Each plane, the variants that are written as the code page's own character, several codes of one
// character, and what is no code.
TEST(CodePage, SomeByThemselves) {
    const int units[][2] = {{'\\', 0x5C},     {0xFF61, 0xA1},   {0x3000, 0x8140}, {0x4E9C, 0x889F},
                            {0xE757, 0xF9FC}, {0x7E8A, 0xFA5C}, {0x301C, 0x8160}, {0x00A5, 0x5C},
                            {0x00E9, '?'},    {0xD800, '?'},    {0x10000, '?'},   {-1, '?'}};
    for (const auto& [unit, code] : units) EXPECT_EQ(encoded(unit), code) << std::hex << unit;
    const unsigned pairs[][3] = {{0x181, 0x40, 0}, {0x81, 0x140, 0},     {~0U, 0x40, 0},
                                 {0x81, ~0U, 0},   {0x87, 0x90, 0x2252}, {0x81, 0xE0, 0x2252}};
    for (const auto& [lead, trail, unit] : pairs) {
        EXPECT_EQ(code_page_pair_to_unit(lead, trail), static_cast<int>(unit));
    }
    EXPECT_EQ(decoded_single(-1), 0);
}

}  // namespace
}  // namespace qvox

#include "platform/code_page.h"

#include <gtest/gtest.h>

#include "platform/iconv_codec.h"

namespace qvox {
namespace {

struct Mapping {
    unsigned code;
    int unit;
};

int decode(unsigned code) {
    return code < 0x100 ? code_page_single_to_unit(code)
                        : code_page_pair_to_unit(code >> 8, code & 0xFF);
}

unsigned encode(int unit) {
    return static_cast<unsigned>(code_page_from_unit(static_cast<unsigned>(unit)));
}

// The whole table in both directions. There is no exception: what we accept beyond the code page
// when writing, the C library accepts too.
TEST(CodePage, ReadsWhatTheSystemReads) {
    const qvox_test::IconvCodec system("CP932");
    if (!system.is_open()) GTEST_SKIP() << "no converter to compare with";
    for (int first = 0; first < 0x100; ++first) {
        ASSERT_EQ(code_page_single_to_unit(static_cast<unsigned>(first)), system.decode(first))
            << std::hex << first;
        for (int second = 0; second < 0x100; ++second) {
            ASSERT_EQ(
                code_page_pair_to_unit(static_cast<unsigned>(first), static_cast<unsigned>(second)),
                system.decode_pair(first, second))
                << std::hex << first << ' ' << second;
        }
    }
}

TEST(CodePage, WritesWhatTheSystemWrites) {
    const qvox_test::IconvCodec system("CP932");
    if (!system.is_open()) GTEST_SKIP() << "no converter to compare with";
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        ASSERT_EQ(encode(unit), static_cast<unsigned>(system.encode(unit))) << std::hex << unit;
    }
}

TEST(CodePage, ReadsAndWritesTheSameCode) {
    const Mapping mappings[] = {
        {0x00, 0},        {0x5C, '\\'},     {0x7E, '~'},      {0x7F, 0x7F},     {0xA1, 0xFF61},
        {0xDF, 0xFF9F},   {0x8140, 0x3000}, {0x8160, 0xFF5E}, {0x817E, 0x00D7}, {0x8180, 0x00F7},
        {0x82A0, 0x3042}, {0x8740, 0x2460}, {0x889F, 0x4E9C}, {0x9FFC, 0x6ECC}, {0xE040, 0x6F3E},
        {0xEAA4, 0x7199}, {0xF040, 0xE000}, {0xF9FC, 0xE757}, {0xFA40, 0x2170}, {0xFBFC, 0x9AD9},
        {0xFC4B, 0x9ED1},
    };
    for (const Mapping& mapping : mappings) {
        EXPECT_EQ(decode(mapping.code), mapping.unit) << std::hex << mapping.code;
        EXPECT_EQ(encode(mapping.unit), mapping.code) << std::hex << mapping.code;
    }
}

// Where several codes have the character, the code that is written.
TEST(CodePage, WritesOneOfSeveralCodes) {
    const struct {
        unsigned read;
        unsigned written;
    } pairs[] = {
        {0x8790, 0x81E0},  // NEC row 13, JIS X 0208
        {0xFA4A, 0x8754},  // IBM, NEC row 13
        {0xFA5B, 0x81E6},  // IBM, JIS X 0208
        {0xEEF9, 0x81CA},  // NEC's copy of IBM, JIS X 0208
        {0xED40, 0xFA5C},  // NEC's copy of IBM, IBM
    };
    for (const auto& pair : pairs) EXPECT_EQ(encode(decode(pair.read)), pair.written) << pair.read;
}

TEST(CodePage, WritesVariantsAsItsOwnCharacter) {
    const Mapping variants[] = {
        {0x8160, 0x301C}, {0x8161, 0x2016}, {0x817C, 0x2212}, {0x8191, 0x00A2}, {0x8192, 0x00A3},
        {0x81CA, 0x00AC}, {0x815C, 0x2014}, {0x5C, 0x00A5},   {0x7E, 0x203E},
    };
    for (const Mapping& variant : variants) {
        EXPECT_EQ(encode(variant.unit), variant.code) << std::hex << variant.unit;
    }
}

TEST(CodePage, RefusesWhatItDoesNotHave) {
    for (const unsigned single : {0x80U, 0x81U, 0xA0U, 0xE0U, 0xFDU, 0xFFU, 0x100U, ~0U}) {
        EXPECT_EQ(code_page_single_to_unit(single), 0) << single;
    }
    const struct {
        unsigned lead;
        unsigned trail;
    } pairs[] = {
        {0x81, 0x3F},  {0x81, 0x7F},  {0x81, 0xFD}, {0x81, 0xFF}, {0x81, 0xAD}, {0x80, 0x40},
        {0xA0, 0x40},  {0xA1, 0x40},  {0xDF, 0x40}, {0xFD, 0x40}, {0xFF, 0x40}, {0x00, 0x40},
        {0x85, 0x40},  {0xEF, 0x40},  {0xFC, 0x4C}, {0xC1, 0x40}, {0x41, 0x41}, {0xEB, 0x40},
        {0x181, 0x40}, {0x81, 0x140}, {~0U, 0x40},  {0x81, ~0U},
    };
    for (const auto& pair : pairs) {
        EXPECT_EQ(code_page_pair_to_unit(pair.lead, pair.trail), 0)
            << pair.lead << ' ' << pair.trail;
    }
    for (const int unit : {0x80, 0xA0, 0xE9, 0xAC00, 0xD800, 0xDFFF, 0xE758, 0xF8F0, 0xFFFE, 0xFFFF,
                           0x10000, 0x13000, -1}) {
        EXPECT_EQ(encode(unit), static_cast<unsigned>('?')) << unit;
    }
}

}  // namespace
}  // namespace qvox

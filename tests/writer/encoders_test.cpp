#include "writer/encoders.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "text/native_text.h"

namespace qvox {
namespace {

std::string encoded(EncodingId encoding, const std::vector<Unit>& units) {
    std::string bytes(2 * units.size(), '\0');
    const char* const end = encode_units(encoding, units.data(), units.size(), bytes.data());
    bytes.resize(static_cast<std::size_t>(end - bytes.data()));
    return bytes;
}

// By the converter of whole texts, which has no short cuts.
std::string converted(EncodingId encoding, std::vector<Unit> units) {
    units.push_back(0);
    std::string bytes(2 * units.size(), '\0');
    std::size_t length = 0;
    wide_to_native(encoding, units.data(), bytes.data(), &length);
    bytes.resize(length);
    return bytes;
}

TEST(Encoders, EveryUnit) {
    for (unsigned unit = 1; unit <= 0xFFFF; ++unit) {
        if (unit == '\n') continue;  // the converter makes two of it
        const std::vector<Unit> text = {static_cast<Unit>(unit)};
        ASSERT_EQ(encoded(SJIS, text), converted(SJIS, text)) << std::hex << unit;
        ASSERT_EQ(encoded(EUC, text), converted(EUC, text)) << std::hex << unit;
    }
}

// Runs of ASCII go another way than single characters, wherever they begin and end.
TEST(Encoders, RunsOfAscii) {
    for (std::size_t before = 0; before < 20; ++before) {
        for (std::size_t length = 0; length < 40; ++length) {
            std::vector<Unit> text(before, 0x8868);
            for (std::size_t i = 0; i < length; ++i) text.push_back(static_cast<Unit>('0' + i));
            for (const Unit last : {Unit{0x7F}, Unit{0x80}, Unit{0xFF71}, Unit{0x4E9C}}) {
                text.push_back(last);
                ASSERT_EQ(encoded(SJIS, text), converted(SJIS, text));
                ASSERT_EQ(encoded(EUC, text), converted(EUC, text));
            }
        }
    }
}

}  // namespace
}  // namespace qvox

#include "writer/encoders.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "text/native_text.h"

namespace qvox {
namespace {

// Compares with the converter of whole texts, which has no short cuts.
void expect_converted(std::vector<Unit> units) {
    for (const EncodingId encoding : {SJIS, EUC}) {
        std::string encoded(2 * units.size(), '\0');
        encoded.resize(static_cast<std::size_t>(
            encode_units(encoding, units.data(), units.size(), encoded.data()) - encoded.data()));
        std::vector<Unit> text = units;
        text.push_back(0);
        std::string converted(2 * text.size(), '\0');
        std::size_t length = 0;
        wide_to_native(encoding, text.data(), converted.data(), &length);
        converted.resize(length);
        ASSERT_EQ(encoded, converted) << std::hex << units.back();
    }
}

TEST(Encoders, EveryUnit) {
    for (unsigned unit = 1; unit <= 0xFFFF; ++unit) {
        if (unit != '\n') expect_converted({static_cast<Unit>(unit)});  // it makes two of that
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
                expect_converted(text);
            }
        }
    }
}

}  // namespace
}  // namespace qvox

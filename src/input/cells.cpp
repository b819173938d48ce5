#include "input/cells.h"

#include "text/lanes.h"

namespace qvox {

namespace {

constexpr Unit FIRST_HALF_WIDTH_KANA = 0xFF61;
constexpr Unit LAST_HALF_WIDTH_KANA = 0xFF9F;

std::size_t size_of(const Unit* from, const Unit* to) {
    return static_cast<std::size_t>(to - from);
}

// Two for a unit with a high byte.
std::size_t utf16_cells(const Unit* from, const Unit* to) {
    const auto isWide = [](const lanes::Units8& units) { return lanes::from(units, 0x100); };
    return size_of(from, to) + lanes::count_if(from, to, isWide);
}

// Two for what isn't ASCII.
std::size_t utf8_cells(const Unit* from, const Unit* to) {
    const auto isWide = [](const lanes::Units8& units) { return lanes::from(units, 0x80); };
    return size_of(from, to) + lanes::count_if(from, to, isWide);
}

// But for half-width kana.
std::size_t japanese_cells(const Unit* from, const Unit* to) {
    const auto isWide = [](const lanes::Units8& units) {
        using namespace lanes;
        const Match kana =
            except(up_to(units, LAST_HALF_WIDTH_KANA), up_to(units, FIRST_HALF_WIDTH_KANA - 1));
        return except(lanes::from(units, 0x80), kana);
    };
    return size_of(from, to) + lanes::count_if(from, to, isWide);
}

}  // namespace

CountCells select_count_cells(EncodingId encoding) {
    switch (encoding) {
        case UTF16: return utf16_cells;
        case SJIS:
        case EUC:
        case JIS: return japanese_cells;
        default: return utf8_cells;
    }
}

}  // namespace qvox

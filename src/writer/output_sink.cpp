#include "writer/output_sink.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace qvox {

// Units that have a replacement, or nothing: all below 64, with some named more than once.
struct UnitSet {
    Unit units[6];
    std::uint64_t mask = 0;  // the same as bits

    explicit constexpr UnitSet(const char (&symbols)[7]) : units() {
        for (std::size_t i = 0; i < 6; ++i) {
            units[i] = static_cast<unsigned char>(symbols[i]);
            mask |= std::uint64_t{1} << units[i];
        }
    }
    bool has(Unit unit) const { return ((unit < 64) & (mask >> (unit & 63) & 1)) != 0; }
};

namespace {

constexpr UnitSet ESCAPED("<>&'\"\"");
constexpr UnitSet ESCAPED_OR_LINE_FEED("<>&'\"\n");
constexpr UnitSet LINE_FEED("\n\n\n\n\n\n");

// Units that are looked at together.
constexpr std::ptrdiff_t STRETCH = 64;

// Written so that compilers make vectors of it.
bool has_any(const Unit* stretch, const UnitSet& set) {
    const Unit wanted[6] = {set.units[0], set.units[1], set.units[2],
                            set.units[3], set.units[4], set.units[5]};
    Unit found = 0;
    for (std::ptrdiff_t i = 0; i < STRETCH; ++i) {
        const Unit one = stretch[i];
        found =
            static_cast<Unit>(found | (one == wanted[0]) | (one == wanted[1]) | (one == wanted[2]) |
                              (one == wanted[3]) | (one == wanted[4]) | (one == wanted[5]));
    }
    return found != 0;
}

const Unit* find_in(const Unit* unit, const Unit* end, const UnitSet& set) {
    while (end - unit >= STRETCH && !has_any(unit, set)) unit += STRETCH;
    return std::find_if(unit, end, [&set](Unit one) { return set.has(one); });
}

std::string_view replacement_of(Unit unit) {
    switch (unit) {
        case '<': return "&lt;";
        case '>': return "&gt;";
        case '&': return "&amp;";
        case '\'': return "&apos;";
        case '"': return "&quot;";
        default: return "\r\n";
    }
}

}  // namespace

OutputSink::OutputSink(OutputTarget& outputTarget, LineFeeds lineFeeds)
    : target(outputTarget), lineFeedsGetCr(lineFeeds == WITH_CR), block(BLOCK_SIZE) {}

void OutputSink::markup(std::string_view ascii) {
    while (!ascii.empty()) {
        const std::size_t count = std::min(ascii.size(), room());
        std::copy_n(ascii.data(), count, block.data() + filled);
        filled += count;
        ascii.remove_prefix(count);
    }
}

void OutputSink::unit(Unit one) {
    room();
    block[filled++] = one;
}

void OutputSink::text(const Xstring& text) { put(text, lineFeedsGetCr ? &LINE_FEED : nullptr); }

void OutputSink::escapedText(const Xstring& text) {
    put(text, lineFeedsGetCr ? &ESCAPED_OR_LINE_FEED : &ESCAPED);
}

void OutputSink::put(const Xstring& text, const UnitSet* replaced) {
    const Unit* unit = text.data();
    const Unit* const end = unit + text.length();
    while (unit != end) {
        const Unit* const stop = unit + std::min(static_cast<std::size_t>(end - unit), room());
        const Unit* const found = replaced != nullptr ? find_in(unit, stop, *replaced) : stop;
        std::copy(unit, found, block.data() + filled);
        filled += static_cast<std::size_t>(found - unit);
        unit = found;
        if (found != stop) markup(replacement_of(*unit++));
    }
}

// At least one unit.
std::size_t OutputSink::room() {
    if (filled == BLOCK_SIZE) flush();
    return BLOCK_SIZE - filled;
}

void OutputSink::flush() {
    if (filled != 0) target.take(block.data(), filled);
    filled = 0;
}

}  // namespace qvox

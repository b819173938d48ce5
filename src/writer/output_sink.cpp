#include "writer/output_sink.h"

#include <algorithm>

namespace qvox {

namespace {

constexpr std::uint64_t set_of(Unit unit) { return std::uint64_t{1} << unit; }

// The replaced units are below this one.
constexpr Unit SET_END = 64;

bool is_in(Unit unit, std::uint64_t set) {
    return ((unit < SET_END) & (set >> (unit & (SET_END - 1)) & 1)) != 0;
}

// Units that are looked at together.
constexpr std::ptrdiff_t RUN = 16;

bool has_low_unit(const Unit* run) {
    bool isLow = false;
    for (std::ptrdiff_t i = 0; i < RUN; ++i) isLow |= run[i] < SET_END;
    return isLow;
}

// The first unit that is in the set, or the end. Japanese text goes by a run at a time.
const Unit* find_in(const Unit* unit, const Unit* end, std::uint64_t set) {
    while (end - unit >= RUN) {
        const Unit* const runEnd = unit + RUN;
        if (has_low_unit(unit)) {
            unit = std::find_if(unit, runEnd, [set](Unit one) { return is_in(one, set); });
            if (unit != runEnd) return unit;
        }
        unit = runEnd;
    }
    return std::find_if(unit, end, [set](Unit one) { return is_in(one, set); });
}

constexpr std::uint64_t LINE_FEED = set_of('\n');
constexpr std::uint64_t ESCAPED =
    set_of('<') | set_of('>') | set_of('&') | set_of('\'') | set_of('"');

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
    : target(outputTarget), lineFeed(lineFeeds == WITH_CR ? LINE_FEED : 0), block(BLOCK_SIZE) {}

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

void OutputSink::text(const Xstring& text) { put(text, lineFeed); }

void OutputSink::escapedText(const Xstring& text) { put(text, ESCAPED | lineFeed); }

void OutputSink::put(const Xstring& text, UnitSet replaced) {
    const Unit* unit = text.data();
    const Unit* const end = unit + text.length();
    while (unit != end) {
        const Unit* const stop = unit + std::min(static_cast<std::size_t>(end - unit), room());
        const Unit* const found = find_in(unit, stop, replaced);
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

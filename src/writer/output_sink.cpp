#include "writer/output_sink.h"

#include <algorithm>
#include <cstddef>

#include "text/lanes.h"

namespace qvox {

namespace {

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

const Unit* find_nothing(const Unit* /*next*/, const Unit* end) { return end; }

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

void OutputSink::text(const Xstring& text) {
    put(text, lineFeedsGetCr ? lanes::find_any_within<'\n'> : find_nothing);
}

void OutputSink::escapedText(const Xstring& text) {
    put(text, lineFeedsGetCr ? lanes::find_any_within<'<', '>', '&', '\'', '"', '\n'>
                             : lanes::find_any_within<'<', '>', '&', '\'', '"'>);
}

void OutputSink::put(const Xstring& text, FindReplaced find) {
    const Unit* unit = text.data();
    const Unit* const end = unit + text.length();
    while (unit != end) {
        const Unit* const stop = unit + std::min(static_cast<std::size_t>(end - unit), room());
        const Unit* const found = find(unit, stop);
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

// The section "sax": every parser at a document of each kind, with handlers that count.
#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "documents.h"
#include "measure.h"
#include "sax_parsers.h"
#include "sections.h"
#include "table.h"

namespace bench {
namespace {

struct Row {
    const char* kind;
    /// How many times as fast as the best of the others is wanted, if it is.
    std::optional<double> atLeast;
};

constexpr Row rows[] = {
    {"Japanese, Shift_JIS", 3.0},
    {"Japanese, EUC-JP", 3.0},
    {"Japanese, ISO-2022-JP", 3.0},
    {"Japanese, UTF-16 little-endian", 2.5},
    {"Japanese, UTF-16 big-endian", 2.5},
    {"Japanese, UTF-8", 2.0},
    {"many namespaces", 1.7},
    {"short records", 1.3},
    {"prose", 1.1},
    {"references in texts", 1.0},
    {"references in attributes", 1.0},
    {"comments", 1.0},
    {"CDATA sections", 1.0},
    {"processing instructions", 1.0},
    {"entities of the internal subset", 0.7},
    {"defaults by ATTLIST", 0.7},
    {"half a kilobyte, UTF-8", std::nullopt},
    {"half a kilobyte, Shift_JIS", std::nullopt},
    {"half a kilobyte, UTF-8, all from files", 1.3},
    {"half a kilobyte, Shift_JIS, all from files", 2.0},
};

std::string describe(const Tally& tally) {
    return std::to_string(tally.elements) + " elements, " + std::to_string(tally.attributes) +
           " attributes with values of " + std::to_string(tally.valueLength) + ", text of " +
           std::to_string(tally.textLength);
}

/// Times of parsers that don't see the same document mean nothing.
void parseChecked(const SaxParser& parser, const Document& document) {
    const Tally expected = parser.expected(document.contents());
    for (int i = 0; i < document.repetitions(); ++i) {
        const Tally seen = parser.parse(document.source());
        if (seen == expected) continue;
        throw std::runtime_error(parser.name + " at " + document.name() + " saw " + describe(seen) +
                                 " instead of " + describe(expected));
    }
}

/// A time for each parser that reads the document, ours first.
std::vector<std::optional<double>> timesOf(const Document& document, int rounds) {
    std::vector<Work> works;
    for (const SaxParser& parser : saxParsers()) {
        if (!parser.reads(document.encoding())) continue;
        works.emplace_back([&parser, &document] { parseChecked(parser, document); });
    }
    const std::vector<double> measured = interleavedMedians(works, rounds);
    std::vector<std::optional<double>> times;
    auto next = measured.begin();
    for (const SaxParser& parser : saxParsers()) {
        times.push_back(parser.reads(document.encoding()) ? std::optional(*next++) : std::nullopt);
    }
    return times;
}

std::optional<double> best(std::vector<std::optional<double>>::const_iterator from,
                           std::vector<std::optional<double>>::const_iterator to) {
    std::optional<double> least;
    for (; from != to; ++from) {
        if (*from && (!least || **from < *least)) least = *from;
    }
    return least;
}

std::vector<std::string> head() {
    std::vector<std::string> names = {"Events, ms"};
    for (const SaxParser& parser : saxParsers()) names.push_back(parser.name);
    names.insert(names.end(), {"times as fast", "at least"});
    return names;
}

bool printRow(const Row& row, const Settings& settings, Table& table) {
    const Document document(documentKind(row.kind), settings.documentSize, settings.directory);
    const std::vector<std::optional<double>> times = timesOf(document, settings.rounds);
    const std::optional<double> peer = best(times.begin() + 1, times.end());
    const std::optional<double> ratio = peer ? std::optional(*peer / *times[0]) : std::nullopt;
    std::vector<std::string> cells = {row.kind};
    for (const std::optional<double>& time : times) cells.push_back(timeCell(time));
    cells.push_back(cell(ratio, 2));
    cells.push_back(cell(row.atLeast, 1));
    table.row(cells);
    return !row.atLeast || (ratio && *ratio >= *row.atLeast);
}

}  // namespace

bool printSax(const Settings& settings, std::ostream& stream) {
    Table table(stream, head(), 42);
    bool allMet = true;
    for (const Row& row : rows) {
        if (settings.wants(row.kind)) allMet = printRow(row, settings, table) && allMet;
    }
    return allMet;
}

}  // namespace bench

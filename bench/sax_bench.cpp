// The group "sax": every SAX parser at every document that it reads, from the file to the handlers.
#include <algorithm>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>

#include "sax_parsers.h"
#include "suite.h"

namespace bench {
namespace {

const std::string group = "sax";

struct Pair {
    const char* contestant;
    const char* rival;
};

/// Like is compared with like: both with namespaces, or both without.
constexpr Pair pairs[] = {{"qvox", "expat"}, {"qvox-no-ns", "expat-no-ns"}, {"qvox", "libxml2"}};

struct Minimum {
    const char* document;
    Pair pair;
    double ratio;
};

constexpr Minimum minimums[] = {{"records", {"qvox", "expat"}, 0.25},
                                {"prose", {"qvox", "expat"}, 0.15},
                                {"japanese-shift_jis", {"qvox", "libxml2"}, 0.5},
                                {"japanese-euc-jp", {"qvox", "libxml2"}, 0.5}};

std::optional<double> minimumOf(const std::string& document, const Pair& pair) {
    for (const Minimum& one : minimums) {
        if (document == one.document && pair.contestant == std::string(one.pair.contestant) &&
            pair.rival == std::string(one.pair.rival)) {
            return one.ratio;
        }
    }
    return std::nullopt;
}

std::string describe(const Tally& tally) {
    return std::to_string(tally.elements) + " elements, " + std::to_string(tally.attributes) +
           " attributes with values of " + std::to_string(tally.valueLength) + ", text of " +
           std::to_string(tally.textLength);
}

/// Speeds of parsers that don't see the same document mean nothing.
void check(const SaxParser& parser, const Document& document) {
    const Tally expected = parser.expected(document.contents);
    const Tally seen = parser.parse(document.path.c_str());
    if (seen == expected) return;
    throw std::runtime_error(parser.name + " at " + document.kind.name + " saw " + describe(seen) +
                             " instead of " + describe(expected));
}

void addCases(Suite& suite, const Document& document) {
    for (const SaxParser& parser : saxParsers()) {
        if (!parser.reads(document.kind.encoding)) continue;
        check(parser, document);
        const auto work = [parse = parser.parse, path = document.path.string()] {
            benchmark::DoNotOptimize(parse(path.c_str()));
        };
        suite.time({group, document.kind.name, parser.name}, document.size, work);
    }
    for (const Pair& pair : pairs) {
        suite.compare({group, document.kind.name, pair.contestant, pair.rival,
                       minimumOf(document.kind.name, pair)});
    }
}

void addSax(Suite& suite) {
    for (const Document& document : suite.documents()) addCases(suite, document);
    for (const SaxParser& parser : saxParsers()) suite.explain(parser.name, parser.note);
}

const GroupRegistration registration(addSax);

}  // namespace
}  // namespace bench

// The section "pairs": qvox alone, at documents that differ in one thing which should cost next to
// nothing.
#include <cstring>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include <qvox/qvox.h>

#include "documents.h"
#include "measure.h"
#include "sax_parsers.h"
#include "sections.h"
#include "table.h"
#include "tree_libraries.h"

namespace bench {
namespace {

struct Row {
    const char* label;
    const char* plain;
    const char* with;
    double atLeast;
};

constexpr Row rows[] = {
    {"CR LF line ends", "short records", "short records, CR LF", 0.9},
    {"indentation", "short records, no indentation", "short records", 0.7},
    {"long names", "short records, no indentation", "short records, long names", 0.7},
};

void printTimes(const std::string& label, const std::vector<double>& times, double atLeast,
                Table& table) {
    table.row({label, timeCell(times[0]), timeCell(times[1]), cell(times[0] / times[1], 2),
               cell(atLeast, 1)});
}

Work countedParse(const Document& document) {
    return [&document] {
        const SaxParser& parser = saxParser("qvox");
        if (parser.parse(document.source()) == parser.expected(document.contents())) return;
        throw std::runtime_error(std::string("qvox miscounts ") + document.name());
    };
}

bool printRow(const Row& row, const Settings& settings, Table& table) {
    const Document plain(documentKind(row.plain), settings.documentSize, settings.directory);
    const Document with(documentKind(row.with), settings.documentSize, settings.directory);
    const std::vector<double> times =
        interleavedMedians({countedParse(plain), countedParse(with)}, settings.rounds);
    printTimes(row.label, times, row.atLeast, table);
    return times[0] / times[1] >= row.atLeast;
}

/// The units behind the byte order mark, with a NUL; on a little-endian machine.
std::vector<unsigned short> unitsOf(const std::string& bytes) {
    constexpr std::size_t unitSize = sizeof(unsigned short);
    std::vector<unsigned short> units(bytes.size() / unitSize);
    std::memcpy(units.data(), bytes.data() + unitSize, bytes.size() - unitSize);
    return units;
}

long elementsOf(qvox::DOMParser& parser, qvox::Document* document) {
    qvox::NodeList* const all = document->getElementsByTagName("*");
    const long count = all->getLength();
    parser.free(all);
    return count;
}

void checkMemoryTree(const Document& document, std::vector<unsigned short>& units) {
    qvox::DOMParser parser;
    qvox::Document* const tree = parser.parse(units.data());
    const long elements = elementsOf(parser, tree);
    parser.free(tree);
    if (elements == document.contents().elements) return;
    throw std::runtime_error("qvox miscounts 16-bit text");
}

bool printMemoryRow(const Settings& settings, Table& table) {
    const std::string label = "tree of 16-bit text, not of a file";
    constexpr double atLeast = 1.0;
    if (!settings.wants(label)) return true;
    const Document document(documentKind("Japanese, UTF-16 little-endian"), settings.documentSize,
                            settings.directory);
    std::vector<unsigned short> units = unitsOf(document.source().bytes);
    checkMemoryTree(document, units);
    const Work fromFile = [&document] { treeLibrary("qvox").load(document.source()); };
    const Work fromMemory = [&units] {
        qvox::DOMParser parser;
        parser.setFeature(qvox::FEATURE_CONCURRENT, true);
        parser.free(parser.parse(units.data()));
    };
    const std::vector<double> times = interleavedMedians({fromFile, fromMemory}, settings.rounds);
    printTimes(label, times, atLeast, table);
    return times[0] / times[1] >= atLeast;
}

}  // namespace

bool printPairs(const Settings& settings, std::ostream& stream) {
    Table table(stream, {"What it costs, ms", "without", "with", "times as fast", "at least"}, 34);
    bool allMet = true;
    for (const Row& row : rows) {
        if (settings.wants(row.label)) allMet = printRow(row, settings, table) && allMet;
    }
    return printMemoryRow(settings, table) && allMet;
}

}  // namespace bench

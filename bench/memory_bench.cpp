// The section on memory: how far a process grows during one parse, and how much of that is not the
// heap of the parse. That rest must not depend on the size of the document, which shows in
// comparison with a smaller one of the same kind.
#include <cstdlib>
#include <iomanip>
#include <ostream>
#include <string>

#include "one_parse.h"
#include "sax_parsers.h"
#include "suite.h"

namespace bench {
namespace {

constexpr int nameWidth = 26;
constexpr int numberWidth = 12;

/// Resident memory is counted in pages, and a little late; growth with the document is far more.
constexpr long tolerance = 1L << 20;

void printMegabytes(long bytes, std::ostream& stream) {
    stream << std::setw(numberWidth) << std::fixed << std::setprecision(2)
           << static_cast<double>(bytes) / 1e6;
}

/// The rest is printed for the document and for one of a quarter of its size. Returns whether they
/// are as good as equal.
bool printOurs(const Suite& suite, const Document& document, std::ostream& stream) {
    const Document smaller =
        writeDocument(document.kind, suite.documentSize() / 4, suite.directory());
    const ParseMemory memory = measureParse("qvox", document.path.string());
    const ParseMemory smallMemory = measureParse("qvox", smaller.path.string());
    const long rest = memory.peak - memory.heap;
    const long smallRest = smallMemory.peak - smallMemory.heap;
    for (const long bytes : {memory.peak, memory.heap, rest, smallRest}) {
        printMegabytes(bytes, stream);
    }
    return memory.heap > 0 && std::labs(rest - smallRest) <= tolerance;
}

void printOthers(const Document& document, std::ostream& stream) {
    for (const SaxParser& parser : saxParsers()) {
        if (parser.name.rfind("qvox", 0) == 0) continue;
        if (parser.reads(document.kind.encoding)) {
            printMegabytes(measureParse(parser.name, document.path.string()).peak, stream);
        } else {
            stream << std::setw(numberWidth) << "-";
        }
    }
}

bool printMemory(const Suite& suite, std::ostream& stream) {
    stream << "\nPeak growth of the resident memory during one parse, MB\n";
    stream << std::left << std::setw(nameWidth) << "  document" << std::right;
    for (const char* const head : {"size", "qvox", "its heap", "the rest", "(quarter)"}) {
        stream << std::setw(numberWidth) << head;
    }
    for (const SaxParser& parser : saxParsers()) {
        if (parser.name.rfind("qvox", 0) != 0) stream << std::setw(numberWidth) << parser.name;
    }
    stream << '\n';
    bool allMet = true;
    for (const Document& document : suite.documents()) {
        stream << std::left << std::setw(nameWidth) << "  " + document.kind.name << std::right;
        printMegabytes(static_cast<long>(document.size), stream);
        const bool met = printOurs(suite, document, stream);
        printOthers(document, stream);
        stream << (met ? "" : "  THE REST GROWS") << std::endl;
        allMet = allMet && met;
    }
    stream << "  asked: nothing grows with the document beside the heap of the parse: "
           << (allMet ? "met" : "MISSED") << '\n';
    return allMet;
}

void addMemory(Suite& suite) {
    suite.addSection(
        {"memory", [&suite](std::ostream& stream) { return printMemory(suite, stream); }});
}

const GroupRegistration registration(addMemory);

}  // namespace
}  // namespace bench

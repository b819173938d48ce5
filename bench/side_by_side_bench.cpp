// The section "side-by-side": two parses on two threads against the same two one after the other,
// by the clock, as SAX parses and into trees. Both read one document, of which ours knows the file
// and others the bytes. Processor time is shown too: what it grows by is what threads cost each
// other, and a machine with other work to do doesn't change it much.
#include <algorithm>
#include <chrono>
#include <ctime>
#include <future>
#include <string>
#include <vector>

#include "documents.h"
#include "measure.h"
#include "sax_parsers.h"
#include "sections.h"
#include "table.h"
#include "tree_libraries.h"

namespace bench {
namespace {

constexpr double asked = 1.8;
/// So many times the rounds of others, of which the best counts.
constexpr int roundsFactor = 5;

constexpr const char* kindsOfDocuments[] = {"short records", "prose", "Japanese, UTF-8",
                                            "Japanese, Shift_JIS"};

struct Spent {
    double clock = 0;      // seconds
    double processor = 0;  // seconds, of all threads

    static Spent at(const Work& work) {
        using Clock = std::chrono::steady_clock;
        const std::clock_t processor = std::clock();
        const Clock::time_point start = Clock::now();
        work();
        const std::chrono::duration<double> elapsed = Clock::now() - start;
        return {elapsed.count(), static_cast<double>(std::clock() - processor) / CLOCKS_PER_SEC};
    }

    /// Other work on the machine only ever adds, so the least of several is nearest to the truth.
    static Spent least(const Spent& a, const Spent& b) {
        return {std::min(a.clock, b.clock), std::min(a.processor, b.processor)};
    }
};

void sideBySide(const Work& work) {
    std::future<void> other = std::async(std::launch::async, work);
    work();
    other.get();
}

struct Contestant {
    std::string name;
    Work parse;
    Spent oneAfterTheOther = {1e9, 1e9};
    Spent together = {1e9, 1e9};

    double gain() const { return oneAfterTheOther.clock / together.clock; }

    void measure() {
        const Work twice = [this] { parse(), parse(); };
        const Work both = [this] { sideBySide(parse); };
        oneAfterTheOther = Spent::least(oneAfterTheOther, Spent::at(twice));
        together = Spent::least(together, Spent::at(both));
    }
};

std::vector<Contestant> saxContestants(const Document& document) {
    std::vector<Contestant> found;
    for (const SaxParser& one : saxParsers()) {
        const bool takesPart = one.name == "qvox" || one.name == "expat";
        if (!takesPart || !one.reads(document.encoding())) continue;
        found.push_back({one.name, [&one, &document] { one.parse(document.source()); }});
    }
    return found;
}

std::vector<Contestant> treeContestants(const Document& document) {
    std::vector<Contestant> found;
    for (const TreeLibrary& one : treeLibraries()) {
        if (one.name != "qvox" && one.name != "libxml2") continue;
        found.push_back({one.name, [&one, &document] { one.load(document.source()); }});
    }
    return found;
}

struct Kind {
    const char* label;
    std::vector<Contestant> (*contestants)(const Document& document);
};

constexpr Kind kinds[] = {{"sax", saxContestants}, {"tree", treeContestants}};

/// Returns whether what is asked for is met.
bool print(const Contestant& one, const std::string& label, Table& table) {
    const bool isOurs = one.name == "qvox";
    table.row({label + ", " + one.name, timeCell(one.oneAfterTheOther.clock * 1e3),
               timeCell(one.together.clock * 1e3),
               cell(one.together.processor / one.oneAfterTheOther.processor, 2),
               cell(one.gain(), 2), isOurs ? cell(asked, 1) : ""});
    return !isOurs || one.gain() >= asked;
}

/// The rounds of different contestants alternate, so that a slow moment hits all alike.
bool printDocument(const Kind& kind, const Document& document, int rounds, Table& table) {
    std::vector<Contestant> contestants = kind.contestants(document);
    for (int round = 0; round < rounds; ++round) {
        for (Contestant& one : contestants) one.measure();
    }
    const std::string label = std::string(kind.label) + ": " + document.name();
    bool allMet = true;
    for (const Contestant& one : contestants) allMet = print(one, label, table) && allMet;
    return allMet;
}

}  // namespace

/// A thread without a processor of its own gains nothing: the machine has to have two free.
bool printSideBySide(const Settings& settings, std::ostream& stream) {
    Table table(stream,
                {"Two parses, ms by the clock", "one by one", "side by side", "processor time",
                 "gain", "at least"},
                36);
    bool allMet = true;
    for (const Kind& kind : kinds) {
        for (const char* const name : kindsOfDocuments) {
            if (!settings.wants(name)) continue;
            const Document document(documentKind(name), settings.documentSize, settings.directory);
            const int rounds = roundsFactor * settings.rounds;
            allMet = printDocument(kind, document, rounds, table) && allMet;
        }
    }
    return allMet;
}

}  // namespace bench

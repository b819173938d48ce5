// The section "side-by-side": two parses on two threads against the same two one after the other,
// by the clock, as SAX parses and into trees. Both read one file, of which the system's cache alone
// knows. Processor time is shown too: what it grows by is what threads cost each other, and a
// machine with other work to do doesn't change it much.
#include <algorithm>
#include <chrono>
#include <ctime>
#include <future>
#include <iomanip>
#include <ostream>
#include <stdlib.h>
#include <string>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>

#include "sax_parsers.h"
#include "suite.h"
#include "tree_libraries.h"

namespace bench {
namespace {

constexpr double asked = 1.8;
constexpr int rounds = 25;
constexpr int labelWidth = 34;
constexpr int contestantWidth = 9;
constexpr int numberWidth = 14;

const std::vector<std::string> documentNames = {"records", "prose", "japanese-utf-8",
                                                "japanese-shift_jis"};

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
        if (!takesPart || !one.reads(document.kind.encoding)) continue;
        found.push_back({one.name, [parse = one.parse, path = document.path.string()] {
                             benchmark::DoNotOptimize(parse(path.c_str()));
                         }});
    }
    return found;
}

std::vector<Contestant> treeContestants(const Document& document) {
    std::vector<Contestant> found;
    for (const TreeLibrary& one : treeLibraries()) {
        if (one.name != "qvox" && one.name != "libxml2") continue;
        found.push_back({one.name, [load = one.load, path = document.path.string()] {
                             benchmark::DoNotOptimize(load(path.c_str()));
                         }});
    }
    return found;
}

struct Kind {
    const char* label;
    std::vector<Contestant> (*contestants)(const Document& document);
};

constexpr Kind kinds[] = {{"sax", saxContestants}, {"tree", treeContestants}};

void printNumber(double number, std::ostream& stream) {
    stream << std::setw(numberWidth) << std::fixed << std::setprecision(2) << number;
}

/// Returns whether what is asked for is met.
bool print(const Contestant& one, const std::string& label, std::size_t bytes,
           std::ostream& stream) {
    const double megabytes = 2.0 * static_cast<double>(bytes) / 1e6;
    const bool met = one.name != "qvox" || one.gain() >= asked;
    stream << std::left << std::setw(labelWidth) << label << std::setw(contestantWidth) << one.name
           << std::right;
    printNumber(megabytes / one.oneAfterTheOther.clock, stream);
    printNumber(megabytes / one.together.clock, stream);
    printNumber(one.gain(), stream);
    printNumber(one.together.processor / one.oneAfterTheOther.processor, stream);
    stream << (met ? "" : "  TOO LITTLE") << std::endl;
    return met;
}

/// The rounds of different contestants alternate, so that a slow moment hits all alike.
bool printDocument(const Kind& kind, const Document& document, std::ostream& stream) {
    std::vector<Contestant> contestants = kind.contestants(document);
    for (int round = 0; round < rounds; ++round) {
        for (Contestant& one : contestants) one.measure();
    }
    const std::string label = std::string("  ") + kind.label + " " + document.kind.name;
    bool allMet = true;
    for (const Contestant& one : contestants) {
        allMet = print(one, label, document.size, stream) && allMet;
    }
    return allMet;
}

void printHead(std::ostream& stream) {
    stream << "\nTwo parses on two threads against one after the other, MB/s by the clock, best of "
           << rounds << " rounds\n";
    stream << std::left << std::setw(labelWidth + contestantWidth) << "  document" << std::right;
    for (const char* const head : {"one by one", "side by side", "gain", "processor"}) {
        stream << std::setw(numberWidth) << head;
    }
    stream << '\n';
}

/// What the gain has to be judged by: a thread without a processor of its own gains nothing.
void printMachine(std::ostream& stream) {
    stream << "  processors: " << std::thread::hardware_concurrency();
    double load = 0;
    if (getloadavg(&load, 1) == 1) stream << ", load of the last minute: " << load;
    stream << "; processor: time of side by side, one by one being 1\n";
}

bool printSideBySide(const Suite& suite, std::ostream& stream) {
    bool allMet = true;
    printHead(stream);
    for (const Kind& kind : kinds) {
        for (const Document& document : suite.documents()) {
            const bool wanted = std::find(documentNames.begin(), documentNames.end(),
                                          document.kind.name) != documentNames.end();
            if (wanted) allMet = printDocument(kind, document, stream) && allMet;
        }
    }
    printMachine(stream);
    stream << "  asked: a gain of " << asked << ": " << (allMet ? "met" : "MISSED") << '\n';
    return allMet;
}

void addSideBySide(Suite& suite) {
    suite.addSection({"side-by-side",
                      [&suite](std::ostream& stream) { return printSideBySide(suite, stream); }});
}

const GroupRegistration registration(addSideBySide);

}  // namespace
}  // namespace bench

#include "suite.h"

#include <utility>

#include <benchmark/benchmark.h>

namespace bench {
namespace {

std::vector<Group>& groups() {
    static std::vector<Group> registered;
    return registered;
}

}  // namespace

Suite::Suite(std::filesystem::path directory, std::size_t documentSize)
    : documentDirectory(std::move(directory)), sizeOfDocuments(documentSize) {
    for (const DocumentKind& kind : documentKinds()) {
        allDocuments.push_back(writeDocument(kind, documentSize, documentDirectory));
    }
}

void Suite::time(const Case& timed, std::size_t bytes, const Work& work) {
    timePrepared(timed, bytes, [work] { return work; });
}

void Suite::timePrepared(const Case& timed, std::size_t bytes,
                         const std::function<Work()>& prepare) {
    allCases.push_back(timed);
    const auto run = [bytes, prepare](benchmark::State& state) {
        const Work work = prepare();
        for ([[maybe_unused]] const auto iteration : state) work();
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
    };
    benchmark::RegisterBenchmark(timed.name().c_str(), run)->Unit(benchmark::kMillisecond);
}

void Suite::explain(const std::string& contestant, const std::string& note) {
    allNotes.push_back(contestant + ": " + note);
}

GroupRegistration::GroupRegistration(Group group) { groups().push_back(group); }

void addGroups(Suite& suite) {
    for (const Group group : groups()) group(suite);
}

}  // namespace bench

/// \file
/// Collects the speeds that were measured and prints them side by side.
#ifndef QVOX_BENCH_RESULTS_H
#define QVOX_BENCH_RESULTS_H

#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "suite.h"

namespace bench {

/// The usual table on the console, which also keeps the median speed of each case.
class Results : public benchmark::ConsoleReporter {
public:
    explicit Results(OutputOptions options) : ConsoleReporter(options) {}

    void ReportRuns(const std::vector<Run>& runs) override;

    /// In bytes a second; nothing for a case that was not run.
    std::optional<double> speed(const Case& timed) const;

private:
    std::map<std::string, double> speeds;
};

/// A row for each document, a column for each contestant.
void printSpeeds(const Suite& suite, const Results& results, std::ostream& stream);

/// Returns whether every minimum was met. One that could not be measured was not met.
bool printRatios(const Suite& suite, const Results& results, std::ostream& stream);

}  // namespace bench

#endif

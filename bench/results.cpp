#include "results.h"

#include <algorithm>
#include <iomanip>
#include <ostream>
#include <sstream>

namespace bench {
namespace {

constexpr int documentWidth = 26;
constexpr int speedWidth = 13;
constexpr int pairWidth = 28;
constexpr int ratioWidth = 7;
constexpr int minimumWidth = 9;

void addOnce(const std::string& name, std::vector<std::string>& names) {
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
}

std::string fixed(double value, int digits) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(digits) << value;
    return text.str();
}

/// Names of the members of the suite's cases, in the order of their first appearance.
std::vector<std::string> distinct(const Suite& suite, std::string Case::*member,
                                  const std::string& group = "") {
    std::vector<std::string> names;
    for (const Case& timed : suite.cases()) {
        if (group.empty() || timed.group == group) addOnce(timed.*member, names);
    }
    return names;
}

void printSpeedsOf(const std::string& group, const Suite& suite, const Results& results,
                   std::ostream& stream) {
    const std::vector<std::string> contestants = distinct(suite, &Case::contestant, group);
    stream << std::left << std::setw(documentWidth) << group + ", MB/s" << std::right;
    for (const std::string& one : contestants) stream << std::setw(speedWidth) << one;
    stream << '\n';
    for (const std::string& document : distinct(suite, &Case::document, group)) {
        stream << std::left << std::setw(documentWidth) << "  " + document << std::right;
        for (const std::string& one : contestants) {
            const std::optional<double> speed = results.speed({group, document, one});
            stream << std::setw(speedWidth) << (speed ? fixed(*speed / 1e6, 1) : "-");
        }
        stream << '\n';
    }
}

std::optional<double> ratioOf(const Comparison& comparison, const Results& results) {
    const std::optional<double> ours = results.speed(comparison.ours());
    const std::optional<double> theirs = results.speed(comparison.theirs());
    if (!ours || !theirs) return std::nullopt;
    return *ours / *theirs;
}

bool isMet(const Comparison& comparison, std::optional<double> ratio) {
    return !comparison.minimum || (ratio && *ratio >= *comparison.minimum);
}

void printRatioHead(const std::string& group, std::ostream& stream) {
    stream << std::left << std::setw(documentWidth + pairWidth) << group << std::right
           << std::setw(ratioWidth) << "ratio" << std::setw(minimumWidth) << "asked" << '\n';
}

void printRatio(const Comparison& comparison, std::optional<double> ratio, std::ostream& stream) {
    stream << std::left << std::setw(documentWidth) << "  " + comparison.document
           << std::setw(pairWidth) << comparison.contestant + " / " + comparison.rival << std::right
           << std::setw(ratioWidth) << (ratio ? fixed(*ratio, 3) : "-");
    if (comparison.minimum) {
        const char* const judged = isMet(comparison, ratio) ? "met" : "MISSED";
        stream << std::setw(minimumWidth) << fixed(*comparison.minimum, 2) << "  "
               << (ratio ? judged : "not measured");
    }
    stream << '\n';
}

}  // namespace

void Results::ReportRuns(const std::vector<Run>& runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        // A single repetition has no aggregates, and is then its own median.
        const bool isMedian = run.run_type == Run::RT_Aggregate ? run.aggregate_name == "median"
                                                                : run.repetitions == 1;
        const auto rate = run.counters.find("bytes_per_second");
        if (!isMedian || run.error_occurred || rate == run.counters.end()) continue;
        speeds[run.run_name.function_name] = rate->second.value;
    }
}

std::optional<double> Results::speed(const Case& timed) const {
    const auto found = speeds.find(timed.name());
    if (found == speeds.end()) return std::nullopt;
    return found->second;
}

void printSpeeds(const Suite& suite, const Results& results, std::ostream& stream) {
    stream << "\nMedian speeds, by processor time\n";
    for (const std::string& group : distinct(suite, &Case::group)) {
        printSpeedsOf(group, suite, results, stream);
    }
    for (const std::string& note : suite.notes()) stream << "  " << note << '\n';
}

bool printRatios(const Suite& suite, const Results& results, std::ostream& stream) {
    bool allMet = true;
    std::string group;
    stream << "\nRatios of the speeds\n";
    for (const Comparison& one : suite.comparisons()) {
        const std::optional<double> ratio = ratioOf(one, results);
        allMet = allMet && isMet(one, ratio);
        if (!ratio && !one.minimum) continue;
        if (one.group != group) printRatioHead(one.group, stream);
        group = one.group;
        printRatio(one, ratio, stream);
    }
    return allMet;
}

}  // namespace bench

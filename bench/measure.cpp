#include "measure.h"

#include <algorithm>
#include <ctime>

namespace bench {
namespace {

/// Of all threads, what the system does for them included, in milliseconds.
double processorTime() {
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double timeOf(const Work& work) {
    const double start = processorTime();
    work();
    return processorTime() - start;
}

double median(std::vector<double> times) {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

}  // namespace

std::vector<double> interleavedMedians(const std::vector<Work>& works, int rounds) {
    for (const Work& work : works) work();
    std::vector<std::vector<double>> times(works.size());
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < works.size(); ++i) times[i].push_back(timeOf(works[i]));
    }
    std::vector<double> medians;
    medians.reserve(times.size());
    for (const std::vector<double>& one : times) medians.push_back(median(one));
    return medians;
}

}  // namespace bench

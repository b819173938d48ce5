/// \file
/// How time is taken.
#ifndef QVOX_BENCH_MEASURE_H
#define QVOX_BENCH_MEASURE_H

#include <functional>
#include <vector>

namespace bench {

using Work = std::function<void()>;

/// The median processor time of each work, in milliseconds. Each round runs each work once, so that
/// a slow moment of the machine hits all alike; a round that isn't counted goes ahead.
std::vector<double> interleavedMedians(const std::vector<Work>& works, int rounds);

}  // namespace bench

#endif

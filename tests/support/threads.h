// Two threads that start at the same moment.
#pragma once

#include <atomic>
#include <thread>

namespace qvox_test {

// Runs the action with 0 and 1, each in a thread of its own, from the same moment on.
template <typename Action>
void in_two_threads(Action action) {
    std::atomic<int> waiting{2};
    const auto run = [&](int which) {
        --waiting;
        while (waiting > 0) std::this_thread::yield();
        action(which);
    };
    std::thread second(run, 1);
    run(0);
    second.join();
}

}  // namespace qvox_test

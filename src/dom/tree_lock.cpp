#include "dom/tree_lock.h"

namespace qvox {

// A thread that has waited can't know whether others still do, and leaves the mark.
void TreeLock::wait() {
    std::unique_lock<std::mutex> guard(waiting);
    becameFree.wait(guard,
                    [this] { return state.exchange(AWAITED, std::memory_order_acquire) == FREE; });
}

// A waiting thread marks the lock and goes to sleep under the mutex: none can be in between.
void TreeLock::wake() {
    { const std::lock_guard<std::mutex> guard(waiting); }
    becameFree.notify_one();
}

}  // namespace qvox

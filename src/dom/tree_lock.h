// The lock of a document, which its holding thread can enter again. Every step to a sibling takes
// it, so taking and leaving it while nobody else wants it is one atomic exchange each.
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace qvox {

class TreeLock {
public:
    TreeLock() = default;
    TreeLock(const TreeLock&) = delete;
    TreeLock& operator=(const TreeLock&) = delete;

    void lock() {
        const std::thread::id self = std::this_thread::get_id();
        if (holder.load(std::memory_order_relaxed) != self) {
            int expected = FREE;
            if (!state.compare_exchange_strong(expected, HELD, std::memory_order_acquire)) {
                wait();
            }
            holder.store(self, std::memory_order_relaxed);
        }
        ++depth;
    }
    void unlock() {
        if (--depth != 0) return;
        holder.store(std::thread::id(), std::memory_order_relaxed);
        if (state.exchange(FREE, std::memory_order_release) == AWAITED) wake();
    }

private:
    enum State : int { FREE, HELD, AWAITED };  // held, and somebody may be waiting

    void wait();
    void wake();

    std::atomic<int> state{FREE};
    std::atomic<std::thread::id> holder{};
    unsigned depth = 0;  // how often the holder has entered
    std::mutex waiting;
    std::condition_variable becameFree;
};

}  // namespace qvox

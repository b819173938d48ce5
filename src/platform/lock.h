// A lock that its holding thread can enter again.
#pragma once

#include <mutex>

#ifdef __MINGW32__
#include <atomic>
#include <thread>
#endif

namespace qvox {

#ifdef __MINGW32__

// The one of the standard library leaves memory behind here when it goes.
class Lock {
public:
    void lock() {
        const std::thread::id self = std::this_thread::get_id();
        // Only this thread itself can have put its own id there.
        if (holder.load(std::memory_order_relaxed) != self) {
            mutex.lock();
            holder.store(self, std::memory_order_relaxed);
        }
        ++depth;
    }
    void unlock() {
        if (--depth != 0) return;
        holder.store(std::thread::id(), std::memory_order_relaxed);
        mutex.unlock();
    }

private:
    std::mutex mutex;
    std::atomic<std::thread::id> holder{};
    unsigned depth = 0;  // how often the holder has entered
};

#else

using Lock = std::recursive_mutex;

#endif

}  // namespace qvox

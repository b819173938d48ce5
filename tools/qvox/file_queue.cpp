#include "file_queue.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

namespace {

class Queue {
public:
    Queue(std::size_t numberOfFiles, std::size_t numberOfThreads,
          const std::function<CheckOutcome(std::size_t)>& workOnOne)
        : count(numberOfFiles), ahead(16 * numberOfThreads), work(workOnOne) {
        for (std::size_t i = 0; i < numberOfThreads; ++i) threads.emplace_back([this] { run(); });
    }
    Queue(const Queue&) = delete;
    Queue& operator=(const Queue&) = delete;
    ~Queue() {
        {
            const std::lock_guard<std::mutex> guard(mutex);
            next = count;
        }
        taken.notify_all();
        for (std::thread& thread : threads) thread.join();
    }

    CheckOutcome take(std::size_t number) {
        std::unique_lock<std::mutex> lock(mutex);
        waited = number;
        taken.notify_all();
        done.wait(lock, [&] { return failure != nullptr || outcomes.count(number) > 0; });
        if (outcomes.count(number) == 0) std::rethrow_exception(failure);
        return std::move(outcomes.extract(number).mapped());
    }

private:
    void run() {
        std::unique_lock<std::mutex> lock(mutex);
        for (;;) {
            // Not far ahead of what is waited for: outcomes take memory.
            taken.wait(lock, [this] { return next >= count || next < waited + ahead; });
            if (next >= count) return;
            const std::size_t number = next++;
            lock.unlock();
            CheckOutcome outcome;
            std::exception_ptr thrown;
            try {
                outcome = work(number);
            } catch (...) {
                thrown = std::current_exception();
            }
            lock.lock();
            if (thrown == nullptr) {
                outcomes.emplace(number, std::move(outcome));
            } else {
                failure = thrown;
                next = count;
            }
            done.notify_all();
        }
    }

    const std::size_t count;
    const std::size_t ahead;
    const std::function<CheckOutcome(std::size_t)>& work;

    std::mutex mutex;
    std::condition_variable done;
    std::condition_variable taken;
    std::size_t next = 0;    // that nobody works on yet
    std::size_t waited = 0;  // that is to be taken
    std::map<std::size_t, CheckOutcome> outcomes;
    std::exception_ptr failure;
    std::vector<std::thread> threads;
};

}  // namespace

void check_side_by_side(std::size_t count, unsigned jobs,
                        const std::function<CheckOutcome(std::size_t)>& work,
                        const std::function<void(const CheckOutcome&)>& take) {
    if (jobs == 0) jobs = std::max(1U, std::thread::hardware_concurrency());
    const std::size_t threads = std::min<std::size_t>(jobs, count);
    if (threads <= 1) {
        for (std::size_t i = 0; i < count; ++i) take(work(i));
        return;
    }
    Queue queue(count, threads, work);
    for (std::size_t i = 0; i < count; ++i) take(queue.take(i));
}

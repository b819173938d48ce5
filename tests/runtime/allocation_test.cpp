// The statistics of two threads that allocate at once. They are process-wide.
#include "runtime/allocation.h"

#include <cstdint>
#include <cstdlib>

#include <gtest/gtest.h>

#include "support/threads.h"

namespace qvox {
namespace {

// Whether the figures leave out an address or a size that was counted.
bool leave_out(std::uintptr_t address, std::size_t size) {
    const AllocationStatistics& s = allocationStatistics;
    return s.mallocMaxSize < size || s.mallocLower > address || s.mallocUpper < address;
}

// qvox_free ends the process where it is given an address outside of the bounds.
TEST(Allocation, NoThreadMovesABoundBack) {
    memstatEnabled = true;
    std::atomic<int> movedBack{0};
    for (int rounds = 0; rounds < 50; ++rounds) {
        allocationStatistics.mallocLower = 0;
        allocationStatistics.mallocUpper = 0;
        allocationStatistics.mallocMaxSize = 0;
        qvox_test::in_two_threads([&](int which) {
            void* block = qvox_malloc(1);
            // Blocks that grow in place: little time is spent elsewhere.
            for (std::size_t size = 8; size <= 100000; size += 8) {
                block = qvox_realloc(block, size + static_cast<std::size_t>(which) * 4);
                if (leave_out(reinterpret_cast<std::uintptr_t>(block), size)) ++movedBack;
            }
            std::free(block);
        });
    }
    memstatEnabled = false;
    EXPECT_EQ(movedBack, 0);
}

}  // namespace
}  // namespace qvox

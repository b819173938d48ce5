// The allocations of the whole process, counted, and one of them made to fail. Replaces operator
// new and, without sanitizers, malloc.
#pragma once

#include <cstddef>

namespace qvox_test {

// Blocks that are allocated now. With a sanitizer those of operator new alone.
long live_blocks();

// What has been asked for so far.
std::size_t allocated_bytes();

// Whether the allocations of malloc are among them.
extern const bool countsMalloc;

enum class Allocator { OPERATOR_NEW, MALLOC };

// From now on the n-th allocation of that kind in a FaultWindow fails, counted from 1: once.
void fail_allocation(Allocator allocator, long n);

// Whether it has.
bool allocation_failed();

// Where allocations can fail: the calls that a test is about, and not the test's own.
class FaultWindow {
public:
    FaultWindow();
    FaultWindow(const FaultWindow&) = delete;
    FaultWindow& operator=(const FaultWindow&) = delete;
    ~FaultWindow();
};

}  // namespace qvox_test

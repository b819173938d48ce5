// Checked allocation on the standard heap: sizes are rounded up to a multiple of 4, failure is a
// fatal report, so no result is null, and statistics are kept on request.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace qvox {

void* qvox_malloc(std::size_t size);
void* qvox_realloc(void* p, std::size_t size);

// A null pointer is a fatal report here: callers test first.
void qvox_free(void* p);

// The same at an address that is a multiple of `alignment`, a power of two; and its counterpart.
void* qvox_aligned_malloc(std::size_t size, std::size_t alignment);
void qvox_aligned_free(void* p, std::size_t alignment);

// Whether statistics are kept. Written by library_start only.
extern bool memstatEnabled;

// Process-wide figures, kept while memstatEnabled and never reset. Each is exact by itself: an
// address is between the bounds before the call that gives it out has returned.
struct AllocationStatistics {
    std::atomic<std::uintptr_t> mallocLower{0};   // lowest address given out
    std::atomic<std::uintptr_t> mallocUpper{0};   // highest address given out
    std::atomic<std::size_t> mallocCount{0};      // calls of qvox_malloc and qvox_realloc
    std::atomic<std::size_t> mallocMaxSize{0};    // largest rounded size
    std::atomic<std::size_t> mallocTotalSize{0};  // sum of rounded sizes; frees don't subtract
    std::atomic<std::size_t> heapBlockCount{0};   // blocks of parse heaps
    std::atomic<std::size_t> heapTotalSize{0};    // bytes of those blocks and of heap headers
};

extern AllocationStatistics allocationStatistics;

// Prints the statistics to standard output.
void memory_statistics();

}  // namespace qvox

#include "runtime/allocation.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <new>

#include "runtime/report.h"

namespace qvox {

bool memstatEnabled = false;
AllocationStatistics allocationStatistics;

namespace {

constexpr std::size_t ROUNDING = 4;

std::size_t rounded(std::size_t size) { return (size + ROUNDING - 1) / ROUNDING * ROUNDING; }

// Puts a value in the bound's place where it lies further out. Another thread may be ahead of this
// one, with a value that lies further out still.
template <typename Value, typename Outside>
void widen(std::atomic<Value>& bound, Value value, Outside outside) {
    Value known = bound.load();
    while (outside(value, known) && !bound.compare_exchange_weak(known, value)) continue;
}

void count_allocation(std::uintptr_t address, std::size_t size) {
    AllocationStatistics& s = allocationStatistics;
    widen(s.mallocLower, address, [](auto a, auto b) { return b == 0 || a < b; });
    widen(s.mallocUpper, address, std::greater<>());
    ++s.mallocCount;
    widen(s.mallocMaxSize, size, std::greater<>());
    s.mallocTotalSize += size;
}

}  // namespace

void* qvox_malloc(std::size_t size) {
    const std::size_t bytes = rounded(size);
    void* p = std::malloc(bytes);
    if (p == nullptr) {
        qvox_report(REPORT_FATAL, QVOXException::ALLOC_ERR, "malloc failed : size = %zu", bytes);
    }
    const auto address = reinterpret_cast<std::uintptr_t>(p);
    if (address % ROUNDING != 0) {
        qvox_report(REPORT_FATAL, QVOXException::ALLOC_ERR, "malloc area is not word boundary");
    }
    if (memstatEnabled) count_allocation(address, bytes);
    return p;
}

void* qvox_realloc(void* p, std::size_t size) {
    const std::size_t bytes = rounded(size);
    void* moved = std::realloc(p, bytes);
    if (moved == nullptr) {
        qvox_report(REPORT_FATAL, QVOXException::ALLOC_ERR, "realloc failed : size = %zu", bytes);
    }
    if (memstatEnabled) count_allocation(reinterpret_cast<std::uintptr_t>(moved), bytes);
    return moved;
}

void qvox_free(void* p) {
    const auto address = reinterpret_cast<std::uintptr_t>(p);
    const bool outside = memstatEnabled && (address < allocationStatistics.mallocLower ||
                                            address > allocationStatistics.mallocUpper);
    if (p == nullptr || outside) {
        qvox_report(REPORT_FATAL, QVOXException::INTERNAL_ERR,
                    "free illegal pointer (%" PRIxPTR ")", address);
    }
    std::free(p);
}

void* qvox_aligned_malloc(std::size_t size, std::size_t alignment) {
    void* p = ::operator new(size, std::align_val_t(alignment), std::nothrow);
    if (p == nullptr) {
        qvox_report(REPORT_FATAL, QVOXException::ALLOC_ERR, "malloc failed : size = %zu", size);
    }
    if (memstatEnabled) count_allocation(reinterpret_cast<std::uintptr_t>(p), size);
    return p;
}

void qvox_aligned_free(void* p, std::size_t alignment) {
    ::operator delete(p, std::align_val_t(alignment));
}

void memory_statistics() {
    const AllocationStatistics& s = allocationStatistics;
    std::printf(
        "memory statistics :\n"
        "    heap block alloc count = %zu\n"
        "    heap total size = %zu\n"
        "    qvox_malloc lower = %" PRIxPTR
        "\n"
        "    qvox_malloc upper = %" PRIxPTR
        "\n"
        "    qvox_malloc count = %zu\n"
        "    qvox_malloc max size = %zu\n"
        "    qvox_malloc total size = %zu\n",
        s.heapBlockCount.load(), s.heapTotalSize.load(), s.mallocLower.load(), s.mallocUpper.load(),
        s.mallocCount.load(), s.mallocMaxSize.load(), s.mallocTotalSize.load());
}

}  // namespace qvox

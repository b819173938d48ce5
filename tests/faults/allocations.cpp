#include "faults/allocations.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <malloc.h>
#include <new>

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define QVOX_OWN_MALLOC
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define QVOX_OWN_MALLOC
#endif

namespace qvox_test {

namespace {

std::atomic<long> live{0};
std::atomic<std::size_t> bytes{0};
std::atomic<long> untilFault{0};
std::atomic<bool> hasFailed{false};
Allocator failing = Allocator::OPERATOR_NEW;
thread_local bool isOpen = false;

bool fails(Allocator allocator) {
    if (!isOpen || allocator != failing || untilFault == 0 || --untilFault != 0) return false;
    hasFailed = true;
    return true;
}

void* counted(void* block, std::size_t size) {
    if (block == nullptr) return block;
    ++live;
    bytes += size;
    return block;
}

}  // namespace

#if defined(QVOX_OWN_MALLOC)
const bool countsMalloc = false;
#else
const bool countsMalloc = true;
#endif

long live_blocks() { return live; }
std::size_t allocated_bytes() { return bytes; }
bool allocation_failed() { return hasFailed; }

void fail_allocation(Allocator allocator, long n) {
    failing = allocator;
    untilFault = n;
    hasFailed = false;
}

FaultWindow::FaultWindow() { isOpen = true; }
FaultWindow::~FaultWindow() { isOpen = false; }

}  // namespace qvox_test

using qvox_test::Allocator;
using qvox_test::countsMalloc;

#if !defined(QVOX_OWN_MALLOC)

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size) noexcept {
    const bool isNull = qvox_test::fails(Allocator::MALLOC);
    return isNull ? nullptr : qvox_test::counted(__libc_malloc(size), size);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    const bool isNull = qvox_test::fails(Allocator::MALLOC);
    return isNull ? nullptr : qvox_test::counted(__libc_calloc(count, size), count * size);
}

void* realloc(void* block, std::size_t size) noexcept {
    if (qvox_test::fails(Allocator::MALLOC)) return nullptr;
    void* const moved = __libc_realloc(block, size);
    if (block != nullptr) --qvox_test::live;
    return qvox_test::counted(moved, size);
}

void* memalign(std::size_t alignment, std::size_t size) noexcept {
    const bool isNull = qvox_test::fails(Allocator::MALLOC);
    return isNull ? nullptr : qvox_test::counted(__libc_memalign(alignment, size), size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
    *block = memalign(alignment, size);
    return *block != nullptr ? 0 : ENOMEM;
}

void free(void* block) noexcept {
    if (block == nullptr) return;
    --qvox_test::live;
    __libc_free(block);
}

}  // extern "C"

#endif

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    if (qvox_test::fails(Allocator::OPERATOR_NEW)) return nullptr;
    void* const block = std::malloc(size != 0 ? size : 1);
    return countsMalloc ? block : qvox_test::counted(block, size);
}

void* operator new(std::size_t size) {
    void* const block = operator new(size, std::nothrow);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

void operator delete(void* block) noexcept {
    if (!countsMalloc && block != nullptr) --qvox_test::live;
    std::free(block);
}

#if defined(__cpp_sized_deallocation)
void operator delete(void* block, std::size_t) noexcept { operator delete(block); }
#endif

#include "platform/large_page.h"

#if defined(__linux__)
#include <cstdint>
#include <sys/mman.h>
#else
#include <new>
#endif

namespace qvox {

#if defined(__linux__)

namespace {

unsigned char* map(std::size_t size) {
    void* const memory =
        mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return memory != MAP_FAILED ? static_cast<unsigned char*>(memory) : nullptr;
}

std::size_t beyond_page_start(const void* memory) {
    return reinterpret_cast<std::uintptr_t>(memory) % LARGE_PAGE;
}

// Twice the size holds a page at the right place; the rest goes back.
unsigned char* map_aligned() {
    unsigned char* const memory = map(2 * LARGE_PAGE);
    if (memory == nullptr) return nullptr;
    const std::size_t behind = beyond_page_start(memory);
    const std::size_t front = behind != 0 ? LARGE_PAGE - behind : 0;
    if (front != 0) munmap(memory, front);
    munmap(memory + front + LARGE_PAGE, LARGE_PAGE - front);
    return memory + front;
}

}  // namespace

// The system tends to put one mapping right beside the one before, so most are in place at once.
void* take_large_page() {
    unsigned char* page = map(LARGE_PAGE);
    if (page != nullptr && beyond_page_start(page) != 0) {
        munmap(page, LARGE_PAGE);
        page = map_aligned();
    }
    if (page != nullptr) madvise(page, LARGE_PAGE, MADV_HUGEPAGE);
    return page;
}

void release_large_page(void* page) { munmap(page, LARGE_PAGE); }

#else

void* take_large_page() { return ::operator new(LARGE_PAGE, std::nothrow); }

void release_large_page(void* page) { ::operator delete(page); }

#endif

}  // namespace qvox

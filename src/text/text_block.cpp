#include "text/text_block.h"

#include <atomic>
#include <limits>
#include <new>

namespace qvox::text_block {

namespace {

// Lies in front of the units.
struct Head {
    std::atomic<std::size_t> holders;
    std::size_t capacity;  // units, without the NUL
};

constexpr std::size_t LARGEST_CAPACITY =
    (std::numeric_limits<std::size_t>::max() - sizeof(Head)) / sizeof(Unit) - 1;

Head* head_of(const Unit* text) {
    return static_cast<Head*>(static_cast<void*>(const_cast<Unit*>(text))) - 1;
}

}  // namespace

Unit* make(std::size_t capacity) {
    if (capacity > LARGEST_CAPACITY) throw std::bad_alloc();
    void* const memory = ::operator new(sizeof(Head) + (capacity + 1) * sizeof(Unit));
    auto* const head = ::new (memory) Head{{1}, capacity};
    return static_cast<Unit*>(static_cast<void*>(head + 1));
}

void hold(const Unit* text) noexcept {
    head_of(text)->holders.fetch_add(1, std::memory_order_relaxed);
}

// A sole holder, as most are, needs no exchange with others.
void drop(const Unit* text) noexcept {
    Head* const head = head_of(text);
    if (head->holders.load(std::memory_order_acquire) != 1 &&
        head->holders.fetch_sub(1, std::memory_order_acq_rel) != 1) {
        return;
    }
    head->~Head();
    ::operator delete(head);
}

Unit* writable(const Unit* text, std::size_t length) noexcept {
    Head* const head = head_of(text);
    const bool isSole = head->holders.load(std::memory_order_acquire) == 1;
    return isSole && length <= head->capacity ? const_cast<Unit*>(text) : nullptr;
}

}  // namespace qvox::text_block

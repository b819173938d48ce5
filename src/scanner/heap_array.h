// A growing array on the parse heap. Like all that lives there it is never destroyed; what it grew
// out of stays until the heap goes.
#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

#include "runtime/heap.h"

namespace qvox {

template <typename Item>
class HeapArray {
    static_assert(std::is_trivially_copyable_v<Item>, "items are moved as bytes");

public:
    Item* begin() { return items; }
    Item* end() { return items + count; }
    const Item* begin() const { return items; }
    const Item* end() const { return items + count; }
    bool empty() const { return count == 0; }
    std::size_t size() const { return count; }

    // The members of the new item, in their order.
    template <typename... Members>
    void append(Heap& heap, const Members&... members) {
        if (count == capacity) grow(heap);
        items[count++] = {members...};
    }

    // Shortens the array; the memory is kept for the items to come.
    void shrink(std::size_t size) { count = size; }

private:
    void grow(Heap& heap) {
        const std::size_t larger = capacity == 0 ? FIRST_CAPACITY : 2 * capacity;
        auto* moved = static_cast<Item*>(heap.halloc_any(larger * sizeof(Item), alignof(Item)));
        if (count != 0) std::memcpy(static_cast<void*>(moved), items, count * sizeof(Item));
        items = moved;
        capacity = larger;
    }

    static constexpr std::size_t FIRST_CAPACITY = 4;

    Item* items;
    std::size_t count;
    std::size_t capacity;
};

}  // namespace qvox

// An array of plain items that grows by doubling, in memory from qvox_malloc.
#pragma once

#include <cstddef>
#include <type_traits>

#include "runtime/allocation.h"

namespace qvox {

template <typename Item>
class GrowingArray {
    static_assert(std::is_trivially_copyable_v<Item>, "items are moved as bytes");

public:
    explicit GrowingArray(std::size_t capacity)
        : items(static_cast<Item*>(qvox_malloc(capacity * sizeof(Item)))), count(capacity) {}
    GrowingArray(const GrowingArray&) = delete;
    GrowingArray& operator=(const GrowingArray&) = delete;
    ~GrowingArray() { qvox_free(items); }

    Item& operator[](std::size_t index) { return items[index]; }
    const Item& operator[](std::size_t index) const { return items[index]; }
    Item* data() { return items; }
    const Item* data() const { return items; }

    // Items that fit.
    std::size_t capacity() const { return count; }

    void grow() {
        items = static_cast<Item*>(qvox_realloc(items, 2 * count * sizeof(Item)));
        count *= 2;
    }

private:
    Item* items;
    std::size_t count;
};

}  // namespace qvox

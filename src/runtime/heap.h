// A heap of a parse: a bump allocator over large blocks. Nothing is freed piece by piece; all of a
// heap goes at once, that of the whole parse when the parse ends.
#pragma once

#include <cstddef>
#include <new>
#include <type_traits>

#include "text/wide.h"

namespace qvox {

class Heap {
public:
    // An empty heap, which gets its first block when something is allocated.
    Heap();
    Heap(const Heap&) = delete;
    Heap& operator=(const Heap&) = delete;
    // Every pointer into the heap is dead from then on.
    ~Heap();

    // Gives up all that was allocated; every pointer into the heap is dead from then on.
    void clear() {
        if (openBlocks != nullptr || fullBlocks != nullptr) empty_blocks();
    }

    // `size` bytes, not cleared, at an address that is a multiple of `align` (a power of two up to
    // alignof(std::max_align_t); 0 for none). A size outside 1 to 4,194,304 is an error of the
    // document.
    void* halloc(std::size_t size, std::size_t align);

    // The same for what may be as large as memory allows: beyond that limit it gets a block of its
    // own.
    void* halloc_any(std::size_t size, std::size_t align);

    // An uninitialised text of `length` units and room for its NUL, however long.
    Unit* halloc_text(std::size_t length);

    // A copy of `length` units with a NUL behind them.
    Unit* halloc_copy(const Unit* text, std::size_t length);

    // A new record of a trivially destructible type, made of the arguments, and value-initialised
    // without any: nothing destroys it.
    template <typename Record, typename... Arguments>
    Record* halloc_record(const Arguments&... arguments) {
        static_assert(std::is_trivially_destructible_v<Record>, "records die with their heap");
        return new (halloc(sizeof(Record), alignof(Record))) Record{arguments...};
    }

private:
    struct Block;

    static Block* new_block(std::size_t payload);
    void* take_block(std::size_t size);
    void push_full(Block* block);
    void move_to_full(Block** link);
    void empty_blocks();
    void free_blocks();

    Block* openBlocks = nullptr;  // blocks with room, in the order in which they were added
    Block* fullBlocks = nullptr;  // blocks without, the most recently filled first
};

}  // namespace qvox

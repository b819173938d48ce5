// The heaps of a parse: bump allocators over large blocks. Nothing is freed piece by piece; all of
// a heap goes at once, that of the whole parse when the parse ends.
#pragma once

#include <cstddef>
#include <new>
#include <type_traits>

#include "text/wide.h"

namespace qvox {

struct Heap;

// A heap with one empty standard block.
Heap* heap_create();

// Gives up all that was allocated; every pointer into the heap is dead from then on.
void heap_clear(Heap* heap);

// Frees the heap; every pointer into it is dead from then on.
void heap_destroy(Heap* heap);

// `size` bytes, not cleared, at an address that is a multiple of `align` (a power of two up to
// alignof(std::max_align_t); 0 for none). A size outside 1 to 4,194,304 is an error of the
// document.
void* halloc(Heap* heap, std::size_t size, std::size_t align);

// The same for what may be as large as memory allows: beyond that limit it gets a block of its own.
void* halloc_any(Heap* heap, std::size_t size, std::size_t align);

// An uninitialised text of `length` units and room for its NUL, however long.
Unit* halloc_text(Heap* heap, std::size_t length);

// A copy of `length` units with a NUL behind them.
Unit* halloc_copy(Heap* heap, const Unit* text, std::size_t length);

// The heap of the running parse. Written by the run of a parse only; null outside.
extern Heap* parseHeap;

// A new record of a trivially destructible type, value-initialised: nothing destroys it.
template <typename Record>
Record* halloc_record(Heap* heap) {
    static_assert(std::is_trivially_destructible_v<Record>, "records die with their heap");
    return new (halloc(heap, sizeof(Record), alignof(Record))) Record{};
}

}  // namespace qvox

#include "runtime/heap.h"

#include <cstdint>
#include <cstring>

#include "runtime/allocation.h"
#include "runtime/report.h"

namespace qvox {

Heap* parseHeap = nullptr;

namespace {

constexpr std::size_t BLOCK_PAYLOAD = 65536;
constexpr std::size_t LARGE_REQUEST = 65536;
constexpr std::size_t LARGEST_REQUEST = 4194304;

// A block that has been too small for this many requests is taken for full, so that a heap with
// many nearly full blocks doesn't walk them all at each request.
constexpr int MOST_MISSES = 32;

// Header of a block; the payload follows it.
struct alignas(std::max_align_t) Block {
    std::size_t remaining;
    unsigned char* next;  // first free byte of the payload
    Block* nextBlock;
    int misses;
};

}  // namespace

struct Heap {
    Block* openBlocks;  // blocks with room, in the order in which they were added
    Block* fullBlocks;  // blocks without, the most recently filled first
};

namespace {

unsigned char* payload_of(Block* block) { return reinterpret_cast<unsigned char*>(block + 1); }

Block* new_block(std::size_t payload) {
    const std::size_t size = payload + sizeof(Block);
    auto* block = static_cast<Block*>(qvox_malloc(size));
    block->remaining = payload;
    block->next = payload_of(block);
    block->nextBlock = nullptr;
    block->misses = 0;
    if (memstatEnabled) {
        ++allocationStatistics.heapBlockCount;
        allocationStatistics.heapTotalSize += size;
    }
    return block;
}

void push_full(Heap* heap, Block* block) {
    block->nextBlock = heap->fullBlocks;
    heap->fullBlocks = block;
}

std::size_t padding_of(const Block* block, std::size_t align) {
    if (align == 0) return 0;
    const auto address = reinterpret_cast<std::uintptr_t>(block->next);
    return (0 - address) & (align - 1);  // a power of two, so that no division is needed
}

void* take(Block* block, std::size_t size) {
    void* taken = block->next;
    block->next += size;
    block->remaining -= size;
    return taken;
}

// A block of exactly `size` bytes, taken whole.
void* take_block(Heap* heap, std::size_t size) {
    Block* block = new_block(size);
    push_full(heap, block);
    return take(block, size);
}

void free_list(Block* block) {
    while (block != nullptr) {
        Block* following = block->nextBlock;
        qvox_free(block);
        block = following;
    }
}

// The first fit beyond the head of the list, with a new block where there is none.
void* halloc_search(Heap* heap, std::size_t size, std::size_t align) {
    Block** link = &heap->openBlocks;
    while (Block* block = *link) {
        const std::size_t padding = padding_of(block, align);
        if (block->remaining >= size + padding) {
            take(block, padding);
            if (block->remaining == size) {
                *link = block->nextBlock;
                push_full(heap, block);
            }
            return take(block, size);
        }
        if (++block->misses < MOST_MISSES) {
            link = &block->nextBlock;
        } else {
            *link = block->nextBlock;
            push_full(heap, block);
        }
    }
    *link = new_block(BLOCK_PAYLOAD);
    return take(*link, size);
}

}  // namespace

Heap* heap_create() {
    auto* heap = static_cast<Heap*>(qvox_malloc(sizeof(Heap)));
    if (memstatEnabled) allocationStatistics.heapTotalSize += sizeof(Heap);
    heap->openBlocks = new_block(BLOCK_PAYLOAD);
    heap->fullBlocks = nullptr;
    return heap;
}

void heap_destroy(Heap* heap) {
    free_list(heap->openBlocks);
    free_list(heap->fullBlocks);
    qvox_free(heap);
}

// The first block stays; a heap that needed no other is cleared in a few steps.
void heap_clear(Heap* heap) {
    Block* first = heap->openBlocks;
    if (heap->fullBlocks == nullptr && first != nullptr && first->nextBlock == nullptr) {
        first->next = payload_of(first);
        first->remaining = BLOCK_PAYLOAD;
        return;
    }
    free_list(heap->openBlocks);
    free_list(heap->fullBlocks);
    heap->openBlocks = new_block(BLOCK_PAYLOAD);
    heap->fullBlocks = nullptr;
}

void* halloc(Heap* heap, std::size_t size, std::size_t align) {
    if (size < 1 || size > LARGEST_REQUEST) {
        qvox_report(REPORT_ERROR, QVOXException::ALLOC_ERR, "illegal halloc size (%zu)", size);
    }
    if (size >= LARGE_REQUEST) return take_block(heap, size);
    Block* first = heap->openBlocks;
    if (first != nullptr) {
        const std::size_t padding = padding_of(first, align);
        if (first->remaining > size + padding) {
            take(first, padding);
            return take(first, size);
        }
    }
    return halloc_search(heap, size, align);
}

void* halloc_any(Heap* heap, std::size_t size, std::size_t align) {
    return size > LARGEST_REQUEST ? take_block(heap, size) : halloc(heap, size, align);
}

Unit* halloc_text(Heap* heap, std::size_t length) {
    return static_cast<Unit*>(halloc_any(heap, (length + 1) * sizeof(Unit), alignof(Unit)));
}

Unit* halloc_copy(Heap* heap, const Unit* text, std::size_t length) {
    Unit* copy = halloc_text(heap, length);
    std::memcpy(copy, text, length * sizeof(Unit));
    copy[length] = 0;
    return copy;
}

}  // namespace qvox

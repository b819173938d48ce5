#include "runtime/heap.h"

#include <cstdint>
#include <cstring>

#include "runtime/allocation.h"
#include "runtime/report.h"

namespace qvox {

namespace {

constexpr std::size_t BLOCK_PAYLOAD = 65536;
constexpr std::size_t FIRST_PAYLOAD = 8192;  // a small document needs no more
constexpr std::size_t LARGE_REQUEST = 65536;
constexpr std::size_t LARGEST_REQUEST = 4194304;

// A block that has been too small for this many requests is taken for full, so that a heap with
// many nearly full blocks doesn't walk them all at each request.
constexpr int MOST_MISSES = 32;

}  // namespace

// Header of a block; the payload follows it.
struct alignas(std::max_align_t) Heap::Block {
    std::size_t remaining;
    unsigned char* next;  // first free byte of the payload
    Block* nextBlock;
    int misses;

    unsigned char* payload() { return reinterpret_cast<unsigned char*>(this + 1); }

    std::size_t padding(std::size_t align) const {
        if (align == 0) return 0;
        const auto address = reinterpret_cast<std::uintptr_t>(next);
        return (0 - address) & (align - 1);  // a power of two, so that no division is needed
    }

    void empty() {
        remaining += static_cast<std::size_t>(next - payload());
        next = payload();
    }

    void* take(std::size_t size) {
        void* taken = next;
        next += size;
        remaining -= size;
        return taken;
    }
};

Heap::Heap() {
    if (memstatEnabled) allocationStatistics.heapTotalSize += sizeof(Heap);
}

Heap::~Heap() { free_blocks(); }

// A heap that needed one block keeps it, and is cleared in a few steps.
void Heap::empty_blocks() {
    const bool isOne = fullBlocks == nullptr && openBlocks->nextBlock == nullptr;
    isOne ? openBlocks->empty() : free_blocks();
}

// The first fit among the open blocks, with a new block behind them where there is none.
void* Heap::halloc(std::size_t size, std::size_t align) {
    if (size < 1 || size > LARGEST_REQUEST) {
        qvox_report(REPORT_ERROR, QVOXException::ALLOC_ERR, "illegal halloc size (%zu)", size);
    }
    if (size >= LARGE_REQUEST) return take_block(size);
    Block** link = &openBlocks;
    while (Block* block = *link) {
        const std::size_t padding = block->padding(align);
        if (block->remaining < size + padding) {
            if (++block->misses < MOST_MISSES) {
                link = &block->nextBlock;
            } else {
                move_to_full(link);
            }
            continue;
        }
        if (block->remaining == size + padding) move_to_full(link);
        block->take(padding);
        return block->take(size);
    }
    const bool isFirst = openBlocks == nullptr && fullBlocks == nullptr;
    *link = new_block(isFirst && size < FIRST_PAYLOAD ? FIRST_PAYLOAD : BLOCK_PAYLOAD);
    return (*link)->take(size);
}

void* Heap::halloc_any(std::size_t size, std::size_t align) {
    return size > LARGEST_REQUEST ? take_block(size) : halloc(size, align);
}

Unit* Heap::halloc_text(std::size_t length) {
    return static_cast<Unit*>(halloc_any((length + 1) * sizeof(Unit), alignof(Unit)));
}

Unit* Heap::halloc_copy(const Unit* text, std::size_t length) {
    Unit* copy = halloc_text(length);
    std::memcpy(copy, text, length * sizeof(Unit));
    copy[length] = 0;
    return copy;
}

Heap::Block* Heap::new_block(std::size_t payload) {
    const std::size_t size = payload + sizeof(Block);
    auto* block = static_cast<Block*>(qvox_malloc(size));
    block->remaining = payload;
    block->next = block->payload();
    block->nextBlock = nullptr;
    block->misses = 0;
    if (memstatEnabled) {
        ++allocationStatistics.heapBlockCount;
        allocationStatistics.heapTotalSize += size;
    }
    return block;
}

// A block of exactly `size` bytes, taken whole.
void* Heap::take_block(std::size_t size) {
    Block* block = new_block(size);
    push_full(block);
    return block->take(size);
}

void Heap::move_to_full(Block** link) {
    Block* block = *link;
    *link = block->nextBlock;
    push_full(block);
}

void Heap::push_full(Block* block) {
    block->nextBlock = fullBlocks;
    fullBlocks = block;
}

void Heap::free_blocks() {
    for (Block** list : {&openBlocks, &fullBlocks}) {
        while (Block* block = *list) {
            *list = block->nextBlock;
            qvox_free(block);
        }
    }
}

}  // namespace qvox

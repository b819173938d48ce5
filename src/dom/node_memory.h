// Memory for the nodes of a parsed document. Parsing makes many small objects in the order in which
// a reader meets them, so each takes the next bytes of a chunk. Taking costs an addition, and
// giving back a subtraction. Chunks come in blocks, the larger the more there are, so that the
// system is seldom asked; a block goes when all that lies in it has gone.
#pragma once

#include <cstddef>

namespace qvox {

class NodeMemory {
public:
    // A piece may be as large as this.
    static constexpr std::size_t LARGEST_PIECE = 8192;

    NodeMemory() = default;
    NodeMemory(const NodeMemory&) = delete;
    NodeMemory& operator=(const NodeMemory&) = delete;
    // What was taken stays until it is released.
    ~NodeMemory();

    // `size` bytes, not cleared, aligned for pointers. For one thread at a time.
    void* take(std::size_t size) {
        const std::size_t rounded = (size + ALIGNMENT - 1) & ~(ALIGNMENT - 1);
        return rounded <= left ? takeHere(rounded) : takeElsewhere(rounded);
    }

    // Gives a piece back, from any thread.
    static void release(void* piece);

private:
    static constexpr std::size_t ALIGNMENT = alignof(void*);

    struct Block;
    struct Chunk;

    void* takeHere(std::size_t size) {
        void* const piece = next;
        next += size;
        left -= size;
        ++taken;
        return piece;
    }
    void* takeElsewhere(std::size_t size);
    void startBlock();
    void startChunk();
    void leaveChunk();

    Block* block = nullptr;
    std::size_t chunksOfBlock = 0;
    std::size_t chunksUsed = 0;
    Chunk* chunk = nullptr;
    unsigned char* next = nullptr;
    std::size_t left = 0;   // bytes behind `next`
    std::size_t taken = 0;  // pieces of this chunk
};

}  // namespace qvox

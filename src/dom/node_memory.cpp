#include "dom/node_memory.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <limits>
#include <new>

#include "runtime/allocation.h"

namespace qvox {

namespace {

// A chunk lies at a multiple of its size, so that a piece's address tells its chunk.
constexpr std::size_t CHUNK_SIZE = 65536;

}  // namespace

// At the start of a block's first chunk; the others keep its place free, so that all are alike.
struct NodeMemory::Block {
    std::atomic<std::size_t> chunks;  // those that aren't finished with

    void drop(std::size_t count) {
        if (chunks.fetch_sub(count, std::memory_order_acq_rel) != count) return;
        this->~Block();
        qvox_aligned_free(this, CHUNK_SIZE);
    }
};

struct NodeMemory::Chunk {
    // While the chunk is being filled it counts down from here, so that taking needs no atomic
    // operation; what was taken is added when it is full.
    static constexpr std::size_t FILLING = std::numeric_limits<std::size_t>::max() / 2;

    explicit Chunk(Block* blockOfChunk) : block(blockOfChunk) {}

    void drop(std::size_t count) {
        if (pieces.fetch_sub(count, std::memory_order_acq_rel) != count) return;
        Block* const home = block;
        this->~Chunk();
        home->drop(1);
    }

    Block* block;
    std::atomic<std::size_t> pieces{FILLING};
};

// With an address sanitizer every piece is an allocation of its own, so that it sees wrong uses.
#if defined(QVOX_ADDRESS_SANITIZER)

NodeMemory::~NodeMemory() = default;

void* NodeMemory::takeElsewhere(std::size_t size) { return qvox_malloc(size); }

void NodeMemory::release(void* piece) { qvox_free(piece); }

#else

// Chunks that were never used are finished with.
NodeMemory::~NodeMemory() {
    leaveChunk();
    if (chunksUsed != chunksOfBlock) block->drop(chunksOfBlock - chunksUsed);
}

void* NodeMemory::takeElsewhere(std::size_t size) {
    startChunk();
    return takeHere(size);
}

// What a single node can keep alive is bounded.
void NodeMemory::startBlock() {
    constexpr std::size_t MOST_CHUNKS = 16;
    const std::size_t chunks = std::min(MOST_CHUNKS, 2 * chunksOfBlock + 1);
    block = new (qvox_aligned_malloc(chunks * CHUNK_SIZE, CHUNK_SIZE)) Block{{chunks}};
    chunksOfBlock = chunks;
    chunksUsed = 0;
}

// A block is started when all chunks of the one before are in use.
void NodeMemory::startChunk() {
    leaveChunk();
    if (chunksUsed == chunksOfBlock) startBlock();
    auto* const place = reinterpret_cast<unsigned char*>(block) + chunksUsed * CHUNK_SIZE;
    chunk = new (place + sizeof(Block)) Chunk(block);
    ++chunksUsed;
    next = reinterpret_cast<unsigned char*>(chunk + 1);
    left = CHUNK_SIZE - sizeof(Block) - sizeof(Chunk);
    taken = 0;
}

void NodeMemory::leaveChunk() {
    if (chunk != nullptr) chunk->drop(Chunk::FILLING - taken);
}

void NodeMemory::release(void* piece) {
    const std::size_t offset = reinterpret_cast<std::uintptr_t>(piece) % CHUNK_SIZE;
    auto* const start = static_cast<unsigned char*>(piece) - offset;
    reinterpret_cast<Chunk*>(start + sizeof(Block))->drop(1);
}

#endif

}  // namespace qvox

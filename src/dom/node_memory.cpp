#include "dom/node_memory.h"

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

struct NodeMemory::Chunk {
    // While the chunk is being filled it counts down from here, so that taking needs no atomic
    // operation; what was taken is added when it is full.
    static constexpr std::size_t FILLING = std::numeric_limits<std::size_t>::max() / 2;

    std::atomic<std::size_t> pieces{FILLING};

    void drop(std::size_t count) {
        if (pieces.fetch_sub(count, std::memory_order_acq_rel) != count) return;
        this->~Chunk();
        qvox_aligned_free(this, CHUNK_SIZE);
    }
};

// With an address sanitizer every piece is an allocation of its own, so that it sees wrong uses.
#if defined(QVOX_ADDRESS_SANITIZER)

void* NodeMemory::takeElsewhere(std::size_t size) { return qvox_malloc(size); }

void NodeMemory::leaveChunk() {}

void NodeMemory::release(void* piece) { qvox_free(piece); }

#else

void* NodeMemory::takeElsewhere(std::size_t size) {
    startChunk();
    return takeHere(size);
}

void NodeMemory::startChunk() {
    leaveChunk();
    chunk = new (qvox_aligned_malloc(CHUNK_SIZE, CHUNK_SIZE)) Chunk;
    next = reinterpret_cast<unsigned char*>(chunk + 1);
    left = CHUNK_SIZE - sizeof(Chunk);
    taken = 0;
}

void NodeMemory::leaveChunk() {
    if (chunk != nullptr) chunk->drop(Chunk::FILLING - taken);
}

void NodeMemory::release(void* piece) {
    const std::size_t offset = reinterpret_cast<std::uintptr_t>(piece) % CHUNK_SIZE;
    reinterpret_cast<Chunk*>(static_cast<unsigned char*>(piece) - offset)->drop(1);
}

#endif

}  // namespace qvox

// Where nodes lie. Each node is a piece of a block, and the block tells what all its nodes have in
// common. A node that a call makes has a block for itself. Parsing and copying make many small
// nodes in the order in which a reader meets them, so these take the next bytes of a block that
// they share: taking costs an addition, and a block goes when all that lies in it has gone. Blocks
// grow with what lies in front of them, so that the system is seldom asked and a small document
// takes little.
//
// With an address sanitizer every node has a block of its own, so that it sees wrong uses.
#pragma once

#include <atomic>
#include <cstddef>

#include <qvox/dom.h>

namespace qvox {

// What is made for a node when somebody asks for it, and lives as long as the node's block.
class NodeExtra {
public:
    NodeExtra() = default;
    NodeExtra(const NodeExtra&) = delete;
    NodeExtra& operator=(const NodeExtra&) = delete;
    virtual ~NodeExtra() = default;

private:
    friend class NodeBlock;

    NodeExtra* next = nullptr;
};

// The head of a block.
class NodeBlock {
public:
    // The bytes that a node's place in its block is counted in.
    static constexpr std::size_t UNIT = alignof(void*);

    NodeBlock(const NodeBlock&) = delete;
    NodeBlock& operator=(const NodeBlock&) = delete;

    // `size` bytes, not cleared, behind a block that is for them alone.
    static void* takeSingle(std::size_t size);
    // The block that is for the piece alone.
    static NodeBlock& ofSingle(void* piece) { return static_cast<NodeBlock*>(piece)[-1]; }

    // Which the nodes belong to; it may have gone.
    Document* getDocument() const { return document; }
    void setDocument(Document* nodesDocument) { document = nodesDocument; }

    // One of the nodes has, or had, a place or a value that it wasn't made with.
    void touch() {
        if (!wasTouched()) touched.store(true, std::memory_order_relaxed);
    }
    bool wasTouched() const { return touched.load(std::memory_order_relaxed); }

    // Whether it is for one node alone.
    bool isSingle() const { return !isShared; }

    // From any thread.
    void keep(NodeExtra* extra);
    // Gives pieces back, from any thread. The last one takes the block with it.
    void release(unsigned count);

protected:
    NodeBlock(Document* nodesDocument, unsigned pieceCount, bool shared)
        : document(nodesDocument), pieces(pieceCount), isShared(shared) {}
    ~NodeBlock();

    Document* document;
    std::atomic<NodeExtra*> extras{nullptr};
    std::atomic<unsigned> pieces;
    std::atomic<bool> touched{false};
    const bool isShared;
};

// A place for a node, and what it lies in: null for a block of its own.
struct NodePlace {
    void* memory;
    NodeBlock* block;
};

// What the constructor of a node has to know.
struct NodeHome {
    // NOLINTNEXTLINE(google-explicit-constructor): a document is home enough
    NodeHome(Document* nodesDocument) : document(nodesDocument) {}
    NodeHome(Document* nodesDocument, NodeBlock* nodesBlock)
        : document(nodesDocument), block(nodesBlock) {}

    Document* document;
    NodeBlock* block = nullptr;
};

inline Node::Node(const NodeHome& home) noexcept
    : index(0), isCounted(0), hasResults(0), standing(0), isSpecified(0) {
    NodeBlock* block = home.block;
    if (block == nullptr) {
        block = &NodeBlock::ofSingle(this);
        block->setDocument(home.document);
    }
    const auto* const start = reinterpret_cast<const unsigned char*>(block);
    const auto distance = reinterpret_cast<const unsigned char*>(this) - start;
    const auto place = static_cast<std::size_t>(distance) / NodeBlock::UNIT;
    placeLow = static_cast<unsigned short>(place & 0xFFFFU);
    placeHigh = static_cast<unsigned char>(place >> 16U);
}

// Makes blocks for the nodes of a document. For one thread at a time.
class NodeMemory {
public:
    explicit NodeMemory(Document* nodesDocument) : document(nodesDocument) {}
    NodeMemory(const NodeMemory&) = delete;
    NodeMemory& operator=(const NodeMemory&) = delete;
    // What was taken stays until it is released.
    ~NodeMemory();

    Document* getDocument() const { return document; }

    // `size` bytes, not cleared, aligned for pointers.
    NodePlace take(std::size_t size) {
        const std::size_t rounded = (size + NodeBlock::UNIT - 1) & ~(NodeBlock::UNIT - 1);
        return rounded <= left ? takeHere(rounded) : takeElsewhere(rounded);
    }
    // The block that the next `size` bytes will lie in, where that has begun; else null.
    const NodeBlock* blockFor(std::size_t size) const { return size <= left ? block : nullptr; }
    // No more will be taken: what there is can go with its nodes.
    void finish();

    // Whether a node has been touched.
    bool wasTouched() const;
    // Frees everything without a visit to the nodes, none of which may be in use any more.
    void drop();

private:
    friend class NodeBlock;
    struct Chain;
    class SharedBlock;

    NodePlace takeHere(std::size_t size) {
        void* const piece = next;
        next += size;
        left -= size;
        ++taken;
        return {piece, block};
    }
    NodePlace takeElsewhere(std::size_t size);
    SharedBlock* startBlock(std::size_t size, unsigned pieceCount);

    Document* document;
    Chain* chain = nullptr;  // all blocks that are left
    NodeBlock* block = nullptr;
    unsigned char* next = nullptr;
    std::size_t left = 0;       // bytes behind `next`
    std::size_t blockSize = 0;  // of the last one
    unsigned taken = 0;         // pieces of this block
};

}  // namespace qvox

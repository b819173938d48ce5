#include "dom/node_memory.h"

#include <algorithm>
#include <mutex>
#include <new>
#include <utility>

#include "platform/large_page.h"
#include "runtime/allocation.h"
#include "runtime/report.h"

#if defined(__SANITIZE_ADDRESS__)
#define QVOX_NODES_APART 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QVOX_NODES_APART 1
#endif
#endif

namespace qvox {

namespace {

#if defined(QVOX_NODES_APART)
constexpr bool NODES_APART = true;
#else
constexpr bool NODES_APART = false;
#endif

constexpr std::size_t FIRST_BLOCK = 1024;
constexpr std::size_t LARGEST_BLOCK = LARGE_PAGE;
// A larger piece has a block that is made for it, and leaves the one in use as it is.
constexpr std::size_t LARGEST_PIECE = LARGEST_BLOCK / 16;

// While a block is being filled it counts down from here, so that taking needs no atomic
// operation; what was taken is added when it is full.
constexpr unsigned FILLING = 1U << 31U;

}  // namespace

NodeBlock::~NodeBlock() {
    NodeExtra* extra = extras.load(std::memory_order_relaxed);
    while (extra != nullptr) delete std::exchange(extra, extra->next);
}

void* NodeBlock::takeSingle(std::size_t size) {
    void* const memory = qvox_malloc(sizeof(NodeBlock) + size);
    auto* const block = ::new (memory) NodeBlock(nullptr, 1, false);
    return block + 1;
}

void NodeBlock::keep(NodeExtra* extra) {
    extra->next = extras.load(std::memory_order_relaxed);
    while (!extras.compare_exchange_weak(extra->next, extra, std::memory_order_release,
                                         std::memory_order_relaxed)) {
    }
}

// The blocks that are left of one NodeMemory, and whether that is still there.
struct NodeMemory::Chain {
    std::mutex lock;
    SharedBlock* first = nullptr;
    bool hasMemory = true;
};

class NodeMemory::SharedBlock final : public NodeBlock {
public:
    static SharedBlock* make(Document* nodesDocument, unsigned pieceCount, std::size_t size,
                             Chain* chain);

    void unlink();
    void free();

    Chain* chain;
    SharedBlock* previous = nullptr;
    SharedBlock* following;
    std::size_t size;

private:
    SharedBlock(Document* nodesDocument, unsigned pieceCount, std::size_t bytes, Chain* blockChain)
        : NodeBlock(nodesDocument, pieceCount, true),
          chain(blockChain),
          following(blockChain->first),
          size(bytes) {}
    ~SharedBlock() = default;
};

NodeMemory::SharedBlock* NodeMemory::SharedBlock::make(Document* nodesDocument, unsigned pieceCount,
                                                       std::size_t size, Chain* chain) {
    void* const memory = size == LARGE_PAGE ? take_large_page() : qvox_malloc(size);
    if (memory == nullptr) {
        qvox_report(REPORT_FATAL, QVOXException::ALLOC_ERR, "malloc failed : size = %zu", size);
    }
    auto* const block = ::new (memory) SharedBlock(nodesDocument, pieceCount, size, chain);
    const std::lock_guard<std::mutex> guard(chain->lock);
    block->following = chain->first;
    if (chain->first != nullptr) chain->first->previous = block;
    chain->first = block;
    return block;
}

// The last block takes the chain with it where the memory has gone before.
void NodeMemory::SharedBlock::unlink() {
    bool isLast = false;
    {
        const std::lock_guard<std::mutex> guard(chain->lock);
        (previous != nullptr ? previous->following : chain->first) = following;
        if (following != nullptr) following->previous = previous;
        isLast = chain->first == nullptr && !chain->hasMemory;
    }
    if (isLast) delete chain;
}

void NodeMemory::SharedBlock::free() {
    const bool isPage = size == LARGE_PAGE;
    this->~SharedBlock();
    if (isPage) {
        release_large_page(this);
    } else {
        qvox_free(this);
    }
}

void NodeBlock::release(unsigned count) {
    if (!isShared) {
        this->~NodeBlock();
        qvox_free(this);
        return;
    }
    if (pieces.fetch_sub(count, std::memory_order_acq_rel) != count) return;
    auto* const block = static_cast<NodeMemory::SharedBlock*>(this);
    block->unlink();
    block->free();
}

NodeMemory::~NodeMemory() {
    finish();
    if (chain == nullptr) return;
    bool isEmpty = false;
    {
        const std::lock_guard<std::mutex> guard(chain->lock);
        chain->hasMemory = false;
        isEmpty = chain->first == nullptr;
    }
    if (isEmpty) delete chain;
}

void NodeMemory::finish() {
    if (block != nullptr) block->release(FILLING - taken);
    block = nullptr;
    left = 0;
    taken = 0;
}

NodeMemory::SharedBlock* NodeMemory::startBlock(std::size_t size, unsigned pieceCount) {
    if (chain == nullptr) chain = new Chain;
    return SharedBlock::make(document, pieceCount, size, chain);
}

NodePlace NodeMemory::takeElsewhere(std::size_t size) {
    if (NODES_APART) return {NodeBlock::takeSingle(size), nullptr};
    if (size > LARGEST_PIECE) {
        SharedBlock* const own = startBlock(sizeof(SharedBlock) + size, 1);
        return {own + 1, own};
    }
    std::size_t newSize = std::clamp(2 * blockSize, FIRST_BLOCK, LARGEST_BLOCK);
    while (newSize < sizeof(SharedBlock) + size) newSize *= 2;
    SharedBlock* const started = startBlock(newSize, FILLING);
    finish();
    block = started;
    blockSize = newSize;
    next = reinterpret_cast<unsigned char*>(started + 1);
    left = newSize - sizeof(SharedBlock);
    return takeHere(size);
}

bool NodeMemory::wasTouched() const {
    if (chain == nullptr) return false;
    const std::lock_guard<std::mutex> guard(chain->lock);
    for (const SharedBlock* one = chain->first; one != nullptr; one = one->following) {
        if (one->wasTouched()) return true;
    }
    return false;
}

void NodeMemory::drop() {
    block = nullptr;
    left = 0;
    taken = 0;
    if (chain == nullptr) return;
    SharedBlock* one = std::exchange(chain->first, nullptr);
    while (one != nullptr) {
        SharedBlock* const dropped = std::exchange(one, one->following);
        dropped->free();
    }
}

}  // namespace qvox

#include "dom/collection.h"

namespace qvox {

namespace {

// So many are counted through faster than an index is asked.
constexpr std::size_t FEW = 16;

}  // namespace

NodeCollection::NodeCollection(Node* collectionOwner, Node* firstNode)
    : owner(collectionOwner), first(firstNode) {
    for (const Node* node = first; node != nullptr; node = NodeLinks::next(node)) ++count;
}

Node* NodeCollection::at(std::size_t number) const {
    if (number >= count) return nullptr;
    if (number + 1 == count) return back();
    if (number >= FEW) return madeIndex().at(number, first, count);
    Node* node = first;
    for (; number > 0; --number) node = NodeLinks::next(node);
    return node;
}

// Where two threads make one at a time, one is thrown away.
NodeIndex& NodeCollection::madeIndex() const {
    NodeIndex* known = numbers.load(std::memory_order_acquire);
    if (known != nullptr) return *known;
    auto made = std::make_unique<NodeIndex>();
    if (!numbers.compare_exchange_strong(known, made.get(), std::memory_order_acq_rel)) {
        return *known;
    }
    return *made.release();
}

void NodeCollection::link(Node* node, Node* ref) {
    if (NodeIndex* const known = numbers.load(std::memory_order_relaxed)) {
        known->comes(node, ref, first);
    }
    first = NodeLinks::linked(first, node, ref);
    ++count;
}

void NodeCollection::unlink(Node* node) {
    if (NodeIndex* const known = numbers.load(std::memory_order_relaxed)) {
        known->leaves(node, first);
    }
    first = NodeLinks::unlinked(first, node);
    --count;
}

}  // namespace qvox

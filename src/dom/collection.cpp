#include "dom/collection.h"

#include <new>

namespace qvox {

namespace {

// So many are counted through faster than an index is asked.
constexpr std::size_t FEW = 16;

// What was made, unless another thread's is there by then.
template <typename Index>
Index* published(std::atomic<Index*>& place, std::unique_ptr<Index> made) {
    Index* known = nullptr;
    if (!place.compare_exchange_strong(known, made.get(), std::memory_order_acq_rel)) return known;
    return made.release();
}

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
    NodeIndex* const known = numbers.load(std::memory_order_acquire);
    return known != nullptr ? *known : *published(numbers, std::make_unique<NodeIndex>());
}

const NameIndex* NodeCollection::byNames() const {
    if (count <= FEW_NAMES) return nullptr;
    NameIndex* const known = names.load(std::memory_order_acquire);
    if (known != nullptr) return known;
    try {
        return published(names, std::make_unique<NameIndex>(first));
    } catch (const std::bad_alloc&) {
        return nullptr;  // it goes without
    }
}

void NodeCollection::enterName(Node* node) {
    NameIndex* const known = names.load(std::memory_order_relaxed);
    if (known == nullptr) return;
    try {
        known->comes(node);
    } catch (const std::bad_alloc&) {
        forgetNames();
    }
}

void NodeCollection::forgetNames() { delete names.exchange(nullptr, std::memory_order_relaxed); }

void NodeCollection::link(Node* node, Node* ref) {
    if (NodeIndex* const known = numbers.load(std::memory_order_relaxed)) {
        known->comes(node, ref, first);
    }
    enterName(node);
    first = NodeLinks::linked(first, node, ref);
    ++count;
}

void NodeCollection::unlink(Node* node) {
    if (NodeIndex* const known = numbers.load(std::memory_order_relaxed)) {
        known->leaves(node, first);
    }
    if (NameIndex* const known = names.load(std::memory_order_relaxed)) known->leaves(node);
    first = NodeLinks::unlinked(first, node);
    --count;
}

}  // namespace qvox

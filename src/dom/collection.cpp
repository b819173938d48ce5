#include "dom/collection.h"

#include <algorithm>

#include "dom/attr.h"
#include "dom/document.h"
#include "dom/node_keeper.h"
#include "dom/owned_nodes.h"
#include "dom/tree.h"
#include "runtime/allocation.h"

namespace qvox {

namespace {

constexpr std::size_t FIRST_ARRAY = 4;
constexpr std::size_t SLOT_SIZE = sizeof(void*);

}  // namespace

NodeCollection::~NodeCollection() {
    destroyNodes();
    freeSlots();
}

bool NodeCollection::holds(const Node* node) const {
    return node != nullptr && node->holder == this;
}

Node* NodeCollection::after(const Node* node) const {
    return node->position + 1 < last ? items[node->position + 1] : nullptr;
}

Node* NodeCollection::before(const Node* node) const {
    return node->position > first ? items[node->position - 1] : nullptr;
}

void NodeCollection::reserve(std::size_t count) {
    if (count <= capacity) return;
    auto** larger = static_cast<Node**>(qvox_malloc(count * SLOT_SIZE));
    std::copy(items, items + last, larger);
    freeSlots();
    items = larger;
    capacity = static_cast<unsigned>(count);
    ownsSlots = true;
}

void NodeCollection::freeSlots() {
    if (ownsSlots) qvox_free(items);
}

// Makes `count` slots behind the nodes free ones.
void NodeCollection::reserveMore(std::size_t count) {
    if (last + count <= capacity) return;
    reserve(std::max({2 * std::size_t{capacity}, FIRST_ARRAY, last + count}));
}

// Makes `count` slots in front of the nodes free ones, and some more where there is to be moved, so
// that many insertions there move each node but a few times.
void NodeCollection::makeRoomInFront(unsigned count) {
    if (first >= count) return;
    const unsigned shift = count + static_cast<unsigned>(size()) / 2;
    reserveMore(shift);
    last += shift;
    for (unsigned i = last - 1; i >= first + shift; --i) moveTo(i, items[i - shift]);
    first += shift;
}

// Makes the slot behind the nodes a free one. Nodes that have left at the front leave their slots
// to the others when they are many.
void NodeCollection::growBack() {
    if (last < capacity) return;
    if (first > capacity / 2) {
        const unsigned gap = first;
        first = 0;
        for (unsigned i = 0; i + gap < last; ++i) moveTo(i, items[i + gap]);
        last -= gap;
    } else {
        reserveMore(1);
    }
}

void NodeCollection::place(Node* node, unsigned index, Parenthood parenthood) {
    moveTo(index, node);
    node->holder = this;
    node->isChild = parenthood == OWNER_IS_PARENT;
}

void NodeCollection::moveTo(unsigned index, Node* node) {
    items[index] = node;
    node->position = index;
}

// A document type, which has no document, takes nodes of the one that it stood under along.
void NodeCollection::leave(Node* node) {
    const int type = node->getNodeType();
    if (type == Node::ATTRIBUTE_NODE) static_cast<AttrImpl*>(node)->setOwnerElement(nullptr);
    if (type == Node::DOCUMENT_TYPE_NODE) {
        DocumentImpl* document = DocumentImpl::livingOne(Tree::ownDocumentOf(node->holder->owner));
        if (document != nullptr) document->setHasTravellers();
    }
    forget(node);
}

void NodeCollection::forget(Node* node) {
    node->holder = nullptr;
    node->isChild = false;
}

void NodeCollection::append(Node* node, Parenthood parenthood) {
    release(node);
    growBack();
    place(node, last++, parenthood);
}

void NodeCollection::appendAll(Node* const* nodes, std::size_t count, Parenthood parenthood) {
    if (last + count > capacity) reserve(last + count);
    for (std::size_t i = 0; i < count; ++i) place(nodes[i], last++, parenthood);
}

void NodeCollection::insertBefore(Node* node, const Node* ref, Parenthood parenthood) {
    if (node == ref) {
        place(node, node->position, parenthood);
        return;
    }
    release(node);
    insertAllBefore(&node, 1, ref, parenthood);
}

// Makes the gap from the nearer end.
void NodeCollection::insertAllBefore(Node* const* nodes, std::size_t count, const Node* ref,
                                     Parenthood parenthood) {
    const auto gap = static_cast<unsigned>(count);
    if (ref->position - first < last - ref->position) {
        makeRoomInFront(gap);
        first -= gap;
        for (unsigned i = first; i + gap < ref->position; ++i) moveTo(i, items[i + gap]);
    } else {
        reserveMore(gap);
        last += gap;
        for (unsigned i = last - 1; i - gap > ref->position; --i) moveTo(i, items[i - gap]);
        moveTo(ref->position + gap, items[ref->position]);
    }
    const unsigned index = ref->position - gap;
    for (unsigned i = 0; i < gap; ++i) place(nodes[i], index + i, parenthood);
}

void NodeCollection::replace(Node* node, Node* old, Parenthood parenthood) {
    if (node == old) return;
    release(node);
    const unsigned index = old->position;
    leave(old);
    place(node, index, parenthood);
}

void NodeCollection::remove(Node* node) {
    eraseAt(node->position);
    leave(node);
}

void NodeCollection::takeOut(Node* node) {
    eraseAt(node->position);
    forget(node);
}

// Closes the gap from the nearer end.
void NodeCollection::eraseAt(unsigned index) {
    if (!isOrdered) {
        moveTo(index, items[--last]);
        return;
    }
    if (index - first < last - 1 - index) {
        for (unsigned i = index; i > first; --i) moveTo(i, items[i - 1]);
        ++first;
    } else {
        --last;
        for (unsigned i = index; i < last; ++i) moveTo(i, items[i + 1]);
    }
    if (isEmpty()) first = last = 0;
}

void NodeCollection::removeAll(const std::vector<Node*>& leaving) {
    if (leaving.empty()) return;
    for (Node* node : leaving) leave(node);
    unsigned kept = leaving.front()->position;
    for (unsigned i = kept; i < last; ++i) {
        if (items[i]->holder == this) moveTo(kept++, items[i]);
    }
    last = kept;
}

void NodeCollection::release(Node* node) {
    if (node->holder == nullptr) return;
    if (node->holder->isOrdered) {
        node->holder->remove(node);
    } else {
        static_cast<NodeKeeper*>(node->holder)->giveUp(node);
    }
}

void NodeCollection::releaseDying(Node* node) {
    if (node->holder == nullptr) return;
    if (node->holder->isOrdered) {
        // What it leaves may have outlived its document.
        const DocumentGuard guard(
            DocumentImpl::livingOne(Tree::ownDocumentOf(node->holder->owner)));
        node->holder->takeOut(node);
    } else {
        static_cast<NodeKeeper*>(node->holder)->giveUp(node);
    }
}

// Always destroys a node that owns nothing any more, so that no destructor goes deep.
void NodeCollection::destroyNodes() {
    NodeCollection* level = this;
    for (;;) {
        Node* node = level->back();
        if (node == nullptr) {
            if (level == this) return;
            level = level->owner->holder;
        } else if (node->getNodeType() == Node::DOCUMENT_NODE) {
            --level->last;
            forget(node);
        } else if (NodeCollection* inner = owned_nodes_of(*node)) {
            level = inner;
        } else {
            --level->last;
            forget(node);
            Tree::destroy(node);
        }
    }
}

}  // namespace qvox

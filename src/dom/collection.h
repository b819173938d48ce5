// Nodes that are owned together, in an order: the one structure behind child lists, attribute maps
// and all else that has nodes. They are a chain, so that a node comes and goes in constant time
// wherever it stands.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

#include <qvox/dom.h>

#include "dom/name_index.h"
#include "dom/node_index.h"
#include "dom/node_links.h"

namespace qvox {

// Linking is all that is done here: who the nodes' holder is, is the caller's to say.
class NodeCollection {
public:
    explicit NodeCollection(Node* collectionOwner) : owner(collectionOwner) {}
    // Takes a chain over.
    NodeCollection(Node* collectionOwner, Node* firstNode);
    NodeCollection(const NodeCollection&) = delete;
    NodeCollection& operator=(const NodeCollection&) = delete;

    Node* getOwner() const { return owner; }
    std::size_t size() const { return count; }
    bool isEmpty() const { return first == nullptr; }
    Node* front() const { return first; }
    Node* back() const { return NodeLinks::last(first); }
    // Null where the number is out of range.
    Node* at(std::size_t number) const;

    // By names, where there are more nodes than FEW_NAMES: so many are compared faster than an
    // index of them is made. Made when it is first asked for; null for fewer, and without memory.
    static constexpr std::size_t FEW_NAMES = 64;
    const NameIndex* byNames() const;
    // A node changes its name: what is known by names is forgotten.
    void forgetNames();

    // In front of `ref`, which is here, or at the end for null.
    void link(Node* node, Node* ref);
    void unlink(Node* node);

protected:
    ~NodeCollection() {
        delete numbers.load(std::memory_order_relaxed);
        forgetNames();
    }

private:
    NodeIndex& madeIndex() const;
    void enterName(Node* node);

    Node* owner;
    Node* first = nullptr;
    std::size_t count = 0;
    // Once a long one is asked for numbers, and for names.
    mutable std::atomic<NodeIndex*> numbers{nullptr};
    mutable std::atomic<NameIndex*> names{nullptr};
};

// Where a node has the nodes that it owns: their chain, and a collection once somebody asks for
// one. Looks into an atomic pointer of the node's, which is null as long as there never were any.
class NodeSlot {
public:
    explicit NodeSlot(std::atomic<void*>& slot) : content(slot) {}

    static NodeSlot childrenOf(const Node* node) { return NodeSlot(NodeLinks::childrenOf(node)); }

    Node* front() const {
        const std::uintptr_t value = bits();
        if ((value & COLLECTION_BIT) == 0) return pointer_in<Node>(value);
        return value == NONE_LEFT ? nullptr : collectionIn(value)->front();
    }
    Node* back() const { return NodeLinks::last(front()); }
    bool isEmpty() const { return front() == nullptr; }
    // Whether there is something, or was once.
    bool wasUsed() const { return bits() != 0; }
    void setUsed() {
        if (!wasUsed()) store(NONE_LEFT);
    }

    // The collection that there is, or null.
    NodeCollection* collection() const {
        const std::uintptr_t value = bits();
        const bool isThere = (value & COLLECTION_BIT) != 0 && value != NONE_LEFT;
        return isThere ? collectionIn(value) : nullptr;
    }
    // That, or one that is made for the nodes of that owner. From any thread.
    template <typename Collection>
    Collection& collectionOf(Node* owner) const;

    void link(Node* node, Node* ref) {
        if (NodeCollection* const made = collection()) return made->link(node, ref);
        store(word_of(NodeLinks::linked(front(), node, ref)));
    }
    void unlink(Node* node) {
        if (NodeCollection* const made = collection()) return made->unlink(node);
        Node* const first = NodeLinks::unlinked(front(), node);
        store(first != nullptr ? word_of(first) : NONE_LEFT);
    }

private:
    // A collection is told from a node by this bit; the bit alone stands for nodes that have gone.
    static constexpr std::uintptr_t COLLECTION_BIT = MARK_BIT;
    static constexpr std::uintptr_t NONE_LEFT = COLLECTION_BIT;

    static NodeCollection* collectionIn(std::uintptr_t value) {
        return pointer_in<NodeCollection>(value);
    }

    std::uintptr_t bits() const { return word_of(content.load(std::memory_order_acquire)); }
    void store(std::uintptr_t value) {
        content.store(as_pointer(value), std::memory_order_release);
    }

    std::atomic<void*>& content;
};

// Where two threads make one at a time, one is thrown away.
template <typename Collection>
Collection& NodeSlot::collectionOf(Node* owner) const {
    struct Made final : NodeExtra {
        Made(Node* collectionOwner, Node* first) : collection(collectionOwner, first) {}
        Collection collection;
    };
    if (NodeCollection* const known = collection()) return static_cast<Collection&>(*known);
    auto made = std::make_unique<Made>(owner, front());
    NodeCollection* const base = &made->collection;
    void* expected = content.load(std::memory_order_relaxed);
    void* const value = as_pointer(word_of(base) | COLLECTION_BIT);
    if (NodeCollection* const known = collection()) return static_cast<Collection&>(*known);
    if (content.compare_exchange_strong(expected, value, std::memory_order_acq_rel)) {
        NodeLinks::blockOf(owner).keep(made.release());
    }
    return static_cast<Collection&>(*collection());
}

}  // namespace qvox

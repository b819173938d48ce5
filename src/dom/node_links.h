// What a node knows of its surroundings: its holder, its neighbours there, what it holds itself,
// and the memory it lies in. All else stands on this, and changes nodes through it alone.
//
// Nodes that stand together form a chain: each knows the next one, the last one none, and each the
// one in front, the first one the last. Who has the first has them all.
#pragma once

#include <atomic>
#include <cstdint>

#include <qvox/dom.h>

#include "dom/node_memory.h"

namespace qvox {

// What a node's holder is.
enum class Standing : unsigned {
    NOWHERE,    // there is none
    CHILD,      // its parent
    LISTED,     // a node that has it among its children, but isn't its parent
    ATTRIBUTE,  // the element in whose map it is
    COLLECTED,  // a collection
    KEPT        // the NodeKeeper of a document
};

// A pointer and a bit that says more, in one word.
constexpr std::uintptr_t MARK_BIT = 1;

inline void* as_pointer(std::uintptr_t word) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the bit is the pointer's own
    return reinterpret_cast<void*>(word);
}

template <typename Pointed>
Pointed* pointer_in(std::uintptr_t word) {
    return static_cast<Pointed*>(as_pointer(word & ~MARK_BIT));
}

inline std::uintptr_t word_of(const void* pointer) {
    return reinterpret_cast<std::uintptr_t>(pointer);
}

struct NodeLinks {
    static NodeBlock& blockOf(const Node* node) {
        const std::size_t place = node->placeLow | std::size_t{node->placeHigh} << 16U;
        auto* const bytes = reinterpret_cast<unsigned char*>(const_cast<Node*>(node));
        return *reinterpret_cast<NodeBlock*>(bytes - place * NodeBlock::UNIT);
    }

    static Standing standingOf(const Node* node) { return static_cast<Standing>(node->standing); }
    // For a child, one that is listed, and an attribute.
    static Node* holderOf(const Node* node) { return node->holder.node; }
    // For one that is collected or kept.
    static NodeCollection* collectionOf(const Node* node) { return node->holder.collection; }

    static void stand(Node* node, Node* holder, Standing standing) {
        node->holder.node = holder;
        setStanding(node, standing);
    }
    static void stand(Node* node, NodeCollection* holder, Standing standing) {
        node->holder.collection = holder;
        setStanding(node, standing);
    }
    static void standNowhere(Node* node) {
        stand(node, static_cast<Node*>(nullptr), Standing::NOWHERE);
    }

    static std::atomic<void*>& childrenOf(const Node* node) {
        return const_cast<Node*>(node)->children;
    }

    static bool hasResults(const Node* node) { return node->hasResults != 0; }
    static void setHasResults(Node* node, bool value) { node->hasResults = value ? 1U : 0U; }

    static bool isSpecified(const Node* node) { return node->isSpecified != 0; }
    static void setSpecified(Node* node, bool value) { node->isSpecified = value ? 1U : 0U; }

    // Calls the destructor alone.
    static void destruct(Node* node) { node->~Node(); }

    // The index of a child, while the parent's children are counted.
    static unsigned indexOf(const Node* node) { return node->index; }
    static void setIndex(Node* node, unsigned value) { node->index = value & LARGEST_INDEX; }
    static bool areCounted(const Node* parent) { return parent->isCounted != 0; }
    static void setCounted(Node* parent, bool value) { parent->isCounted = value ? 1U : 0U; }
    static constexpr unsigned LARGEST_INDEX = (1U << 30U) - 1;

    // Chains, by their first nodes. Neighbours of a node in one:
    static Node* next(const Node* node) {
        return pointer_in<Node>(node->next.load(std::memory_order_acquire));
    }
    static Node* previous(const Node* node) {
        return next(node->previous) != nullptr ? node->previous : nullptr;
    }
    static Node* last(const Node* first) { return first != nullptr ? first->previous : nullptr; }
    // The next one of a child, null for what is none. Whatever changes there at the time: it is the
    // one from before or the one from after that.
    static Node* nextSibling(const Node* node) {
        const std::uintptr_t word = node->next.load(std::memory_order_acquire);
        return (word & CHILD_BIT) != 0 ? pointer_in<Node>(word) : nullptr;
    }
    // Each returns the first node after the change. `ref` is in the chain, or null for its end.
    static Node* linked(Node* first, Node* node, Node* ref) {
        if (ref == nullptr) return linkedLast(first, node);
        setNext(node, ref);
        node->previous = ref->previous;
        ref->previous = node;
        if (ref == first) return node;
        setNext(node->previous, node);
        return first;
    }
    static Node* linkedLast(Node* first, Node* node) {
        setNext(node, nullptr);
        if (first == nullptr) {
            node->previous = node;
            return node;
        }
        node->previous = first->previous;
        setNext(first->previous, node);
        first->previous = node;
        return first;
    }
    static Node* unlinked(Node* first, Node* node) {
        Node* const behind = next(node);
        if (node == first) {
            if (behind != nullptr) behind->previous = node->previous;
            return behind;
        }
        setNext(node->previous, behind);
        (behind != nullptr ? behind : first)->previous = node->previous;
        return first;
    }

private:
    // Marks a node that is a child.
    static constexpr std::uintptr_t CHILD_BIT = MARK_BIT;

    static void setNext(Node* node, Node* following) {
        const std::uintptr_t bit = node->next.load(std::memory_order_relaxed) & CHILD_BIT;
        node->next.store(word_of(following) | bit, std::memory_order_release);
    }
    static void setStanding(Node* node, Standing standing) {
        const std::uintptr_t following = node->next.load(std::memory_order_relaxed) & ~CHILD_BIT;
        const std::uintptr_t bit = standing == Standing::CHILD ? CHILD_BIT : 0;
        node->next.store(following | bit, std::memory_order_release);
        node->standing = static_cast<unsigned>(standing) & 7U;
    }
};

}  // namespace qvox

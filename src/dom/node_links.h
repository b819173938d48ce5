// What a node knows of its surroundings: its holder, its neighbours there, what it holds itself,
// and the memory it lies in. All else stands on this, and changes nodes through it alone.
//
// Nodes that stand together form a chain: each knows the next one, the last one none, and each the
// one in front, the first one the last. Who has the first has them all.
#pragma once

#include <atomic>

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

struct NodeLinks {
    static NodeBlock& blockOf(const Node* node) {
        auto* const bytes = reinterpret_cast<unsigned char*>(const_cast<Node*>(node));
        return *reinterpret_cast<NodeBlock*>(bytes - node->place * NodeBlock::UNIT);
    }

    static Standing standingOf(const Node* node) { return static_cast<Standing>(node->standing); }
    // For a child, one that is listed, and an attribute.
    static Node* holderOf(const Node* node) { return node->holder.node; }
    // For one that is collected or kept.
    static NodeCollection* collectionOf(const Node* node) { return node->holder.collection; }

    static void stand(Node* node, Node* holder, Standing standing) {
        node->holder.node = holder;
        node->standing = static_cast<unsigned>(standing) & 7U;
    }
    static void stand(Node* node, NodeCollection* holder, Standing standing) {
        node->holder.collection = holder;
        node->standing = static_cast<unsigned>(standing) & 7U;
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
    static Node* next(const Node* node) { return node->next; }
    static Node* previous(const Node* node) {
        return node->previous->next != nullptr ? node->previous : nullptr;
    }
    static Node* last(const Node* first) { return first != nullptr ? first->previous : nullptr; }
    // Each returns the first node after the change. `ref` is in the chain, or null for its end.
    static Node* linked(Node* first, Node* node, Node* ref) {
        if (ref == nullptr) return linkedLast(first, node);
        node->next = ref;
        node->previous = ref->previous;
        ref->previous = node;
        if (ref == first) return node;
        node->previous->next = node;
        return first;
    }
    static Node* linkedLast(Node* first, Node* node) {
        node->next = nullptr;
        if (first == nullptr) {
            node->previous = node;
            return node;
        }
        node->previous = first->previous;
        first->previous->next = node;
        first->previous = node;
        return first;
    }
    static Node* unlinked(Node* first, Node* node) {
        Node* const behind = node->next;
        if (node == first) {
            if (behind != nullptr) behind->previous = node->previous;
            return behind;
        }
        node->previous->next = behind;
        (behind != nullptr ? behind : first)->previous = node->previous;
        return first;
    }
};

}  // namespace qvox

// The unchecked ways of changing a tree and of moving in it, on which the public operations, the
// builder and the ranges stand. No acceptance test, no document test, no lock.
#pragma once

#include <memory>

#include <qvox/dom.h>

#include "dom/node_list.h"
#include "platform/lock.h"

namespace qvox {

class DocumentImpl;

struct Tree {
    // The node's own document, or the node itself if it is one; null for a document type that no
    // document made.
    static DocumentImpl* documentOf(const Node* node);
    // The same for a node that may have outlived it.
    static const Document* ownDocumentOf(const Node* node);

    static Node* parentOf(const Node* node) {
        return node->isChild ? node->holder->getOwner() : nullptr;
    }
    // The node in whose child list this one stands. That is its parent, but for a node that a
    // refused insertion of a fragment has left in that fragment without one.
    static Node* listOwnerOf(const Node* node) {
        Node* owner = node->holder != nullptr ? node->holder->getOwner() : nullptr;
        return owner != nullptr && node->holder == owner->children ? owner : nullptr;
    }
    // What follows in the child list.
    static Node* nextInList(const Node* node) {
        return listOwnerOf(node) != nullptr ? node->holder->after(node) : nullptr;
    }
    // The child list; null until the first child has arrived.
    static NodeListImpl* childrenOf(const Node* node) { return node->children; }
    static Node* firstChildOf(const Node* node) {
        return node->children != nullptr ? node->children->front() : nullptr;
    }
    static Node* lastChildOf(const Node* node) {
        return node->children != nullptr ? node->children->back() : nullptr;
    }
    // Null without a parent.
    static Node* nextSiblingNoLock(const Node* node) {
        return node->isChild ? node->holder->after(node) : nullptr;
    }
    static Node* previousSiblingNoLock(const Node* node) {
        return node->isChild ? node->holder->before(node) : nullptr;
    }

    // A child with a parent leaves it first. A fragment gives its children up. Returns `child`.
    static Node* appendChildNoCheck(Node* parent, Node* child);
    // Appends a node without a place, also a fragment, which then stands as a child itself.
    static void appendAsIs(Node* parent, Node* child);
    // As appendChildNoCheck, but in front of `ref`; null when that isn't a child, the child being
    // detached by then.
    static Node* insertBeforeNoCheck(Node* parent, Node* child, Node* ref);
    // Null when `child` isn't one.
    static Node* removeChildNoCheck(Node* parent, Node* child);
    // Returns `oldChild`; null when that isn't a child. Without a child list nothing happens.
    static Node* replaceChildNoCheck(Node* parent, Node* newChild, Node* oldChild);

    // Whether `node` is `candidate` or hangs from it, be it as a child or from an attribute; not by
    // way of a document, which nobody owns.
    static bool owns(const Node* candidate, const Node* node);

    // Whether the type of `child` is one for children of `parent`, and whether it is neither that
    // nor an ancestor of it. A fragment fits everywhere.
    static bool fits(const Node* parent, const Node* child);
    // Whether `child` may be put under `parent`: it fits and doesn't own it.
    static bool accepts(const Node* parent, const Node* child);

    // The document whose tree the node stands in, in whatever way; for a loose tree the document of
    // its root. Null only where nobody up there has one.
    static DocumentImpl* treeDocumentOf(const Node* node);
    // The same in constant time as long as the node's own document has no travellers; that document
    // has to be alive.
    static DocumentImpl* treeDocumentOfLiving(const Node* node);

    // For a node that has the list inside itself and is going.
    static void dropChildList(Node* node) { node->children = nullptr; }

    // Whether the node's document is to be told when the node goes.
    static void setHasResults(Node* node, bool value) { node->hasResults = value; }

    // Destroys a node, with all that it owns; null is ignored.
    static void destroy(Node* node);
    // The node has been made in a piece of NodeMemory, which it goes back to.
    static void setInChunk(Node* node) { node->isInChunk = true; }
    // Puts nodes without a place under a parent, behind its children.
    static void appendAll(Node* parent, Node* const* nodes, std::size_t count);

    // Gives a node without a place, which nobody would free otherwise, to the document whose tree
    // it stood in; where that is null, to its own. A document stays its maker's.
    static void abandon(Node* node, DocumentImpl* document);

    // To be told when a node is put under another one.
    static void noteTravel(const Node* parent, const Node* node);

private:
    struct FragmentContent;

    static void makeChildList(Node* parent);
    static FragmentContent contentOf(Node* fragment);
    static void emptyFragment(const FragmentContent& content, Node* fragment);
    static void takeFragment(Node* parent, Node* fragment);
    static Node* insertFragment(Node* parent, Node* fragment, Node* ref);
    static const Node* ownerOf(const Node* node);
    static void clearParent(Node* node) { node->isChild = false; }
};

struct NodeDestroyer {
    void operator()(Node* node) const { Tree::destroy(node); }
};

// A node without a place, for the time in which something may fail.
template <typename NodeType>
using OwnedNode = std::unique_ptr<NodeType, NodeDestroyer>;

// Gives such a node to a parent, as appendAsIs does.
template <typename NodeType>
NodeType* append_owned(Node* parent, OwnedNode<NodeType> child) {
    Tree::appendAsIs(parent, child.get());
    return child.release();
}

// Holds the lock of the node's document, if it has one. None for null.
class DocumentGuard {
public:
    explicit DocumentGuard(const Node* node);
    DocumentGuard(const DocumentGuard&) = delete;
    DocumentGuard& operator=(const DocumentGuard&) = delete;
    ~DocumentGuard();

private:
    Lock* lock;
};

}  // namespace qvox

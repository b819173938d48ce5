// The unchecked ways of changing a tree and of moving in it, on which the public operations, the
// builder and the ranges stand. No acceptance test, no document test, no lock.
#pragma once

#include <memory>

#include <qvox/dom.h>

#include "dom/collection.h"
#include "dom/node_links.h"
#include "dom/node_list.h"
#include "dom/tree_lock.h"

namespace qvox {

class DocumentImpl;

struct Tree {
    // The node's own document, or the node itself if it is one; null for a document type that no
    // document made.
    static DocumentImpl* documentOf(const Node* node);
    // The same for a node that may have outlived it.
    static const Document* ownDocumentOf(const Node* node) {
        return NodeLinks::blockOf(node).getDocument();
    }

    static Node* parentOf(const Node* node) { return isChild(node) ? holderOf(node) : nullptr; }
    // The node in whose child list this one stands. That is its parent, but for a node that a
    // refused insertion of a fragment has left in that fragment without one.
    static Node* listOwnerOf(const Node* node) { return isListed(node) ? holderOf(node) : nullptr; }
    // What follows in the child list.
    static Node* nextInList(const Node* node) {
        return isListed(node) ? NodeLinks::next(node) : nullptr;
    }
    static Node* firstChildOf(const Node* node) { return NodeSlot::childrenOf(node).front(); }
    static Node* lastChildOf(const Node* node) { return NodeSlot::childrenOf(node).back(); }
    // Null without a parent.
    static Node* nextSiblingNoLock(const Node* node) { return NodeLinks::nextSibling(node); }
    static Node* previousSiblingNoLock(const Node* node) {
        return isChild(node) ? NodeLinks::previous(node) : nullptr;
    }

    // The child list: the shared empty one until the first child has arrived.
    static NodeListImpl& childListOf(const Node* node);
    // The index of a child.
    static std::size_t childIndexOf(const Node* parent, const Node* child);

    // The element in whose map a node is, or null.
    static Element* elementWith(const Node* node) {
        const bool isThere = NodeLinks::standingOf(node) == Standing::ATTRIBUTE;
        return isThere ? static_cast<Element*>(holderOf(node)) : nullptr;
    }

    // Takes a node out of what has it, if anything has.
    static void release(Node* node);
    // The same for a node that is being destroyed, which is no longer of its own type.
    static void releaseDying(Node* node);
    // Something of the node, or of what it holds, is no longer as it was made.
    static void touch(const Node* node) { NodeLinks::blockOf(node).touch(); }

    // A child with a parent leaves it first. A fragment gives its children up. Returns `child`.
    static Node* appendChildNoCheck(Node* parent, Node* child);
    // Appends a node without a place, also a fragment, which then stands as a child itself.
    static void appendAsIs(Node* parent, Node* child);
    // The same in a tree that is being made, of nodes that are: nobody is told.
    static void appendNew(Node* parent, Node* child) {
        NodeSlot::childrenOf(parent).link(child, nullptr);
        NodeLinks::stand(child, parent, Standing::CHILD);
    }
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

    // Destroys a node, with all that it owns, however deep that goes; null is ignored. Nobody owns
    // a document: one that stands in it is let go.
    static void destroy(Node* node);
    // The same for what it owns.
    static void destroyContent(Node* node);

    // Gives a node without a place, which nobody would free otherwise, to the document whose tree
    // it stood in; where that is null, to its own. A document stays its maker's.
    static void abandon(Node* node, DocumentImpl* document);

    // To be told when a node is put under another one.
    static void noteTravel(const Node* parent, const Node* node);

private:
    struct FragmentContent;

    static Node* holderOf(const Node* node) { return NodeLinks::holderOf(node); }
    static bool isChild(const Node* node) { return NodeLinks::standingOf(node) == Standing::CHILD; }
    static bool isListed(const Node* node) {
        const Standing standing = NodeLinks::standingOf(node);
        return standing == Standing::CHILD || standing == Standing::LISTED;
    }
    static bool isListedIn(const Node* parent, const Node* node) {
        return node != nullptr && listOwnerOf(node) == parent;
    }

    static void put(Node* parent, Node* node, Node* ref, Standing standing);
    static FragmentContent contentOf(Node* fragment);
    static void emptyFragment(const FragmentContent& content, Node* fragment);
    static void takeFragment(Node* parent, Node* fragment);
    static Node* insertFragment(Node* parent, Node* fragment, Node* ref);
    static const Node* ownerOf(const Node* node);
    static Node* standsWith(const Node* node);
    static void loseParent(Node* node);
    static void takeOut(Node* node);
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

// Gives a node that was just made to a parent that is being made, as appendNew does.
template <typename NodeType>
NodeType* append_new(Node* parent, OwnedNode<NodeType> child) {
    Tree::appendNew(parent, child.get());
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
    TreeLock* lock;
};

}  // namespace qvox

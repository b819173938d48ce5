/// \file
/// Node iterators and tree walkers (DOM Level 2 Traversal).
///
/// Both hold one node and know nothing of changes to the tree: a step goes on from where they stand
/// by the links as they are now. Neither is bound to its root: in document order a walk that has
/// left the root's subtree goes on with what follows or precedes it in the whole tree. They take no
/// lock; a tree may be walked by several threads as long as none changes it.
#ifndef QVOX_TRAVERSAL_H
#define QVOX_TRAVERSAL_H

#include <qvox/export.h>

namespace qvox {

class Node;

/// Decides which nodes a walk shows, for callers to implement.
///
/// ATTENTION: the results are not those of the DOM standard. **0 accepts the node, and every other
/// value refuses it**; 1, which accepts in the standard, refuses here. Use the names. A refusal is
/// always of the one node: whether its subtree is entered depends on the operation alone.
class QVOX_API NodeFilter {
public:
    /// What acceptNode answers. REJECT and SKIP do the same.
    enum Result : int { FILTER_ACCEPT = 0, FILTER_REJECT = 2, FILTER_SKIP = 3 };

    /// The masks of `whatToShow`: bit t - 1 shows the node type t.
    enum Show : unsigned long {
        SHOW_ALL = 0xFFFFFFFF,
        SHOW_ELEMENT = 0x1,
        SHOW_ATTRIBUTE = 0x2,
        SHOW_TEXT = 0x4,
        SHOW_CDATA_SECTION = 0x8,
        SHOW_ENTITY_REFERENCE = 0x10,
        SHOW_ENTITY = 0x20,
        SHOW_PROCESSING_INSTRUCTION = 0x40,
        SHOW_COMMENT = 0x80,
        SHOW_DOCUMENT = 0x100,
        SHOW_DOCUMENT_TYPE = 0x200,
        SHOW_DOCUMENT_FRAGMENT = 0x400,
        SHOW_NOTATION = 0x800
    };

    /// 0 accepts the node. Not asked about a node whose type isn't shown.
    virtual int acceptNode(Node* node) = 0;

protected:
    ~NodeFilter() = default;
};

/// Steps through a tree in document order. Made and freed by a Document, which has to outlive it.
class QVOX_API NodeIterator {
public:
    /// Ends the iterator: no further steps. A second call is no error.
    virtual void detach() = 0;
    /// As given at creation.
    virtual NodeFilter* getFilter() const = 0;
    /// Null after detach().
    virtual Node* getRoot() const = 0;
    /// As given at creation.
    virtual unsigned long getWhatToShow() const = 0;
    /// As given at creation. It has no effect: entity references are entered like any node.
    virtual bool getExpandEntityReferences() const = 0;
    /// The next node that is shown: the root at first, null behind the last node of the whole tree,
    /// and the root again after that null. DOMException INVALID_STATE_ERR after detach().
    virtual Node* nextNode() = 0;
    /// The same in the other direction; it begins with the root too.
    virtual Node* previousNode() = 0;

protected:
    ~NodeIterator() = default;
};

/// Moves about in a tree. Made and freed by a Document, which has to outlive it.
///
/// Each step looks for the first node in its direction that is shown, makes it the current node and
/// returns it; where there is none it returns null and stays. firstChild, lastChild, nextSibling
/// and previousSibling stay on one level: what lies below a node that isn't shown is not looked at.
class QVOX_API TreeWalker {
public:
    /// The first child of the current node that is shown.
    virtual Node* firstChild() = 0;
    /// Where the walker stands: the root at first.
    virtual Node* getCurrentNode() const = 0;
    /// As given at creation.
    virtual NodeFilter* getFilter() const = 0;
    /// As given at creation.
    virtual Node* getRoot() const = 0;
    /// As given at creation.
    virtual unsigned long getWhatToShow() const = 0;
    /// As given at creation. It has no effect: entity references are entered like any node.
    virtual bool getExpandEntityReferences() const = 0;
    /// The last child of the current node that is shown.
    virtual Node* lastChild() = 0;
    /// The next sibling that is shown.
    virtual Node* nextSibling() = 0;
    /// The next node in document order that is shown.
    virtual Node* nextNode() = 0;
    /// May go above the root.
    virtual Node* parentNode() = 0;
    /// The node in front of this one, in document order, that is shown.
    virtual Node* previousNode() = 0;
    /// The previous sibling that is shown.
    virtual Node* previousSibling() = 0;
    /// Any node, also outside the root's subtree. DOMException NOT_SUPPORTED_ERR for null.
    virtual void setCurrentNode(Node* node) = 0;

protected:
    ~TreeWalker() = default;
};

/// The factory of iterators and walkers. Every Document is one.
class QVOX_API DocumentTraversal {
public:
    /// A new iterator, the caller's, to be freed by freeNodeIterator before the document is.
    /// `filter` stays the caller's and may be null. DOMException NOT_SUPPORTED_ERR for a null root.
    virtual NodeIterator* createNodeIterator(Node* root, unsigned long whatToShow,
                                             NodeFilter* filter, bool expandEntityReferences) = 0;
    /// The same for a walker, to be freed by freeTreeWalker.
    virtual TreeWalker* createTreeWalker(Node* root, unsigned long whatToShow, NodeFilter* filter,
                                         bool expandEntityReferences) = 0;
    /// Null is ignored.
    virtual void freeTreeWalker(TreeWalker* walker) = 0;
    /// Null is ignored.
    virtual void freeNodeIterator(NodeIterator* iterator) = 0;

protected:
    ~DocumentTraversal() = default;
};

}  // namespace qvox

#endif

/// \file
/// Ranges (DOM Level 2 Range).
///
/// A range is a stretch of a tree between two boundary points. A point is a container and an
/// offset: in a text, CDATA section, comment or processing instruction a number of 16-bit units of
/// its data, in any other node a number of children.
///
/// ATTENTION: three things are not as the DOM standard has them.
///  - A range doesn't follow changes of the tree, not even those by its own insertNode: its points
///    keep their container and offset, whatever has moved, gone or been freed. Set them anew.
///  - The text of a range, toString(), has the opening tags of its elements in it.
///  - What is copied or deleted where the range cuts an element follows the order of tags alone;
///    cloneContents and deleteContents say how. deleteContents can remove an element as a whole
///    that began in front of the range.
///
/// The order of points. A point with a child behind it stands where that child opens; the end of a
/// container stands where its last child closes; a point in a container without children stands
/// between that container's two tags, and a range that ends there has neither of them. A point in a
/// text stands where the text opens, whatever the offset. Points that meet in this order are equal,
/// but for the offsets that compareBoundaryPoints looks at.
///
/// Stale points. A child offset beyond the present number of children counts as the end. Of a unit
/// offset beyond the present length, the start's raises DOMException INDEX_SIZE_ERR in operations
/// on the content, before anything has changed, and the end's counts as the end of the data. A
/// range whose start has come to stand behind its end has no content. A range whose containers have
/// come to stand in different trees raises DOMException NOT_SUPPORTED_ERR in operations on the
/// content. A container that was freed must not be used again: set both points anew first.
///
/// Threads. Ranges of different documents may be used by different threads. Ranges of one document,
/// and changes of that document, are for the caller to order.
///
/// Setting and comparing points takes time by the depth of the nodes and by the number of siblings,
/// operations on the content besides by the size of that content; neither by the size of the tree.
/// Nothing here recurses.
#ifndef QVOX_RANGE_H
#define QVOX_RANGE_H

#include <qvox/export.h>
#include <qvox/xstring.h>

namespace qvox {

class DocumentFragment;
class Node;

/// A stretch of a tree. Made and freed by a Document, which has to outlive it.
///
/// Every operation but getCommonAncestorContainer raises DOMException INVALID_STATE_ERR after
/// detach(). One that raises changes nothing, unless it says otherwise.
///
/// Operations that set a point take nodes of any tree and document, and raise for a null node
/// RangeException INVALID_NODE_TYPE_ERR. When the point that was set would make the range end
/// before it starts, or lies in another tree than the other point, the other one is moved to it.
class QVOX_API Range {
public:
    /// Which points compareBoundaryPoints compares: that of the other range, then that of this one.
    enum CompareHow : int {
        START_TO_START = 0,
        START_TO_END = 1,
        END_TO_END = 2,
        END_TO_START = 3
    };

    /// A copy of the content in a new fragment, the caller's. Attributes are copied with their
    /// elements. An end of the range in a text, CDATA section, comment or processing instruction
    /// cuts the copy. Of the elements that the range cuts,
    ///  - one that opens in it and closes behind it is copied, with those of its children that are
    ///    in the range;
    ///  - one that opens in front of it and closes in it comes as an empty copy, behind the copies
    ///    of its children in the range;
    ///  - one that has no children is not copied when the range ends in it.
    /// A start at the end of an element takes that element's last child along, where the range goes
    /// on behind it: an element as an empty copy, a text with all its data. DOMException
    /// HIERARCHY_REQUEST_ERR where the common ancestor is a document type or a document with one,
    /// also if that is outside the range.
    virtual DocumentFragment* cloneContents() = 0;
    /// A new range at the same points, the caller's. The points are set as by setStart and setEnd,
    /// which may raise where they are stale.
    virtual Range* cloneRange() = 0;
    /// Makes both points the start, or else the end.
    virtual void collapse(bool toStart) = 0;
    /// Where this range's point lies as seen from the other range's: -1 before it, 1 behind it, 0
    /// at it. Where they meet and this range's *start* is in a text, CDATA section, comment or
    /// processing instruction, the offsets of the two points decide, whatever `how` is. 0 for any
    /// other `how`. DOMException WRONG_DOCUMENT_ERR where the ranges start in different trees, and
    /// for a detached or null range.
    virtual int compareBoundaryPoints(int how, Range* sourceRange) = 0;
    /// Removes the content and collapses the range to its start, which may be a node out of the
    /// tree then. A text, CDATA section, comment or processing instruction that holds an end of the
    /// range loses the part in the range and stays. An element that closes behind the range stays
    /// too. One that opens in front of the range and whose content ends in it is removed *as a
    /// whole*, with what of it lay in front, also where the range starts at its very end. An
    /// element without children in which the range starts or ends is not removed.
    ///
    /// Removed nodes are detached and not destroyed. A caller that holds one may use it, attach it
    /// again, or free it with DOMParser::freeNode; the rest is freed with its document.
    virtual void deleteContents() = 0;
    /// Ends the range: it can only be freed then.
    virtual void detach() = 0;
    /// cloneContents, then deleteContents: what comes back are copies. If the copying raises,
    /// nothing is deleted.
    virtual DocumentFragment* extractContents() = 0;
    /// The start as it was set.
    virtual Node* getStartContainer() const = 0;
    /// The start as it was set.
    virtual int getStartOffset() const = 0;
    /// The end as it was set.
    virtual Node* getEndContainer() const = 0;
    /// The end as it was set.
    virtual int getEndOffset() const = 0;
    /// Whether the points were one when they were last set. False for points in different
    /// containers, also where they meet.
    virtual bool getCollapsed() const = 0;
    /// The lowest node that both containers are or stand under; null after detach(), and where the
    /// containers have come to stand in different trees.
    virtual Node* getCommonAncestorContainer() const = 0;
    /// Inserts a node at the start; a text or CDATA section there is split, with a Text for its
    /// second part. The points of the range stay as they are.
    ///
    /// ATTENTION: whether the node is acceptable is asked the wrong way round: the start container
    /// has to be a node that may stand under `newNode`, and `newNode` must not be or stand under
    /// the start container. Only then it is asked whether `newNode` may go where it is to go. So an
    /// element or a fragment with the start in an element or in text is fine, and nothing goes into
    /// a document. A start container that is a fragment passes always: there alone a text, CDATA
    /// section, comment or processing instruction can be inserted.
    ///
    /// In this order: DOMException WRONG_DOCUMENT_ERR; RangeException INVALID_NODE_TYPE_ERR for an
    /// attribute, entity, document and notation, and ahead of all for null; DOMException
    /// HIERARCHY_REQUEST_ERR, also where the start is in a comment, a processing instruction, or a
    /// text without parent; INDEX_SIZE_ERR for a stale start in a text; NOT_FOUND_ERR where
    /// `newNode` is itself the child of a fragment behind the start, which leaves it detached.
    virtual void insertNode(Node* newNode) = 0;
    /// Makes the range the node with all that is in it. RangeException INVALID_NODE_TYPE_ERR under
    /// an entity, document type or notation, and for null, an attribute, entity, document,
    /// fragment, notation and a node without parent.
    virtual void selectNode(Node* node) = 0;
    /// Makes the range all that is in the node. RangeException INVALID_NODE_TYPE_ERR for null, and
    /// under an entity, document type or notation; the three themselves are allowed.
    virtual void selectNodeContents(Node* node) = 0;
    /// Sets the end. RangeException INVALID_NODE_TYPE_ERR for an entity, document type or notation,
    /// and under one; DOMException INDEX_SIZE_ERR for an offset below 0 or beyond the end.
    virtual void setEnd(Node* node, int offset) = 0;
    /// Sets the end behind a node, in its parent. RangeException INVALID_NODE_TYPE_ERR for an
    /// attribute, entity, document, fragment and notation, and in a tree whose root is not an
    /// attribute, document or fragment.
    virtual void setEndAfter(Node* node) = 0;
    /// The same in front of a node.
    virtual void setEndBefore(Node* node) = 0;
    /// Sets the start. As setEnd, but the node itself may be an entity, document type or notation.
    virtual void setStart(Node* node, int offset) = 0;
    /// As setEndAfter.
    virtual void setStartAfter(Node* node) = 0;
    /// As setEndBefore.
    virtual void setStartBefore(Node* node) = 0;
    /// Takes the content out as by extractContents, puts `newParent` where it was as by insertNode,
    /// appends the content to the children of `newParent`, and selects that. The content is copies.
    /// The two containers have to be one node or siblings: RangeException BAD_BOUNDARYPOINTS_ERR.
    /// Besides, the exceptions of cloneContents and insertNode, with INVALID_NODE_TYPE_ERR also for
    /// a document type and a fragment.
    virtual void surroundContents(Node* newParent) = 0;
    /// The data of all texts, CDATA sections, comments and processing instructions in the range,
    /// and "<name>" for each element that opens in it, in document order. The string is the
    /// range's and valid until the next call.
    virtual const Xstring& toString() = 0;

protected:
    ~Range() = default;
};

/// The factory of ranges. Every Document is one.
class QVOX_API DocumentRange {
public:
    /// A new range with both points at the start of the document, the caller's, to be freed by
    /// freeRange before the document is.
    virtual Range* createRange() = 0;
    /// Null is ignored.
    virtual void freeRange(Range* range) = 0;

protected:
    ~DocumentRange() = default;
};

}  // namespace qvox

#endif

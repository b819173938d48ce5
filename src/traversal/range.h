#pragma once

#include <qvox/dom.h>

#include "traversal/range_boundaries.h"
#include "traversal/range_contents.h"

namespace qvox {

class RangeImpl final : public Range {
public:
    explicit RangeImpl(Document* rangeDocument)
        : document(rangeDocument), start{rangeDocument, 0}, end{rangeDocument, 0} {}

    DocumentFragment* cloneContents() override;
    Range* cloneRange() override;
    void collapse(bool toStart) override;
    int compareBoundaryPoints(int how, Range* sourceRange) override;
    void deleteContents() override;
    void detach() override;
    DocumentFragment* extractContents() override;
    Node* getStartContainer() const override;
    int getStartOffset() const override;
    Node* getEndContainer() const override;
    int getEndOffset() const override;
    bool getCollapsed() const override;
    Node* getCommonAncestorContainer() const override;
    void insertNode(Node* newNode) override;
    void selectNode(Node* node) override;
    void selectNodeContents(Node* node) override;
    void setEnd(Node* node, int offset) override;
    void setEndAfter(Node* node) override;
    void setEndBefore(Node* node) override;
    void setStart(Node* node, int offset) override;
    void setStartAfter(Node* node) override;
    void setStartBefore(Node* node) override;
    void surroundContents(Node* newParent) override;
    const Xstring& toString() override;

private:
    void checkAttached() const;
    // Sets a point and brings the other one to it where the range would end before it starts.
    void moveStart(const BoundaryPoint& point);
    void moveEnd(const BoundaryPoint& point);
    bool isInOrder() const;
    bool isCollapsed() const;

    // Whether a node may be inserted at the start, in front of `ref`. These raise if it may not.
    void checkSameDocument(const Node* newNode) const;
    void checkStartFitsUnder(const Node* newNode) const;
    void checkStartTakes(const Node* newNode, const Node* ref) const;
    // Whether what is inserted there, with the content of the range gone, can be selected.
    void checkSurroundedSelectable() const;
    void insertAtStart(Node* newNode);
    // Where an insertion goes: the start container, or its parent if it is a text to be split.
    Node* insertionParent() const;

    Document* document;  // null when detached
    BoundaryPoint start;
    BoundaryPoint end;
    bool collapsed = true;
    Xstring text;  // the last result of toString
};

}  // namespace qvox

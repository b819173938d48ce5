// The content of a range: which nodes it selects, copying, deleting and reading them.
#pragma once

#include "dom/tree.h"
#include "traversal/range_boundaries.h"

namespace qvox {

// The content between two points as they now are. It is made for one operation.
class RangeContents {
public:
    // Raises where the points are in different trees.
    RangeContents(const BoundaryPoint& rangeStart, const BoundaryPoint& rangeEnd);

    // Appends copies to a fragment.
    void copyTo(Node* fragment) const;
    // Detached nodes are left to their documents.
    void remove() const;
    void appendTextTo(Xstring& text) const;

private:
    // Units of a node's data, from `from` to before `to`.
    struct Part {
        int from;
        int to;
    };

    // The units of a node that are in the range. Raises for a start beyond the end of its data.
    Part partOf(const Node* node, const Xstring& data) const;
    OwnedNode<Node> copyOf(Node* node) const;
    // Whether deleting cuts the node rather than removing it.
    bool isCut(const Node* node) const;
    void cut(Node* node) const;

    BoundaryPoint start;
    BoundaryPoint end;
    Node* ancestor;
    // The selected tags are those from `first` to before `stop`.
    TagPlace first;
    TagPlace stop;
};

}  // namespace qvox

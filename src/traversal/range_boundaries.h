// Boundary points of ranges, and their order.
//
// Number the tags of a tree in the order in which a walk meets them, a node's opening tag before
// its children and its closing tag behind them. A point has the number of a tag: of the opening one
// of the child behind it, or at the end of a container of the closing one of the last child. A
// point in a container without children lies between that node's tags. The numbers themselves are
// never needed: a point is kept as the tag that it counts as, and two tags are compared by where
// the paths to them part.
#pragma once

#include <qvox/dom.h>

namespace qvox {

struct BoundaryPoint {
    Node* container = nullptr;
    int offset = 0;
};

// A tag, or the place between the two tags of a container without children.
struct TagPlace {
    enum Side : int { OPENING, BETWEEN, CLOSING };

    Node* node;
    Side side;

    bool operator==(const TagPlace& other) const {
        return node == other.node && side == other.side;
    }
    bool operator!=(const TagPlace& other) const { return !(*this == other); }
};

// Whether offsets in a node count units of its data.
bool counts_units(const Node* node);
// The largest offset in a node.
int max_offset(const Node* node);
// The child behind a point in a node that counts children; null at the end of the container.
Node* child_behind(const BoundaryPoint& point);
// The index of a child of `parent`.
int child_index(const Node* parent, const Node* child);

// The topmost node above a node, or the node itself; null for null.
Node* root_of(Node* node);
// The lowest node that both are or stand under; null where there is none, and for a null node.
Node* common_ancestor(Node* one, Node* other);

TagPlace place_of(const BoundaryPoint& point);
// Below, at or above 0 as `one` comes before, is, or comes behind `other`. Both are in one tree.
int compare_places(const TagPlace& one, const TagPlace& other);

}  // namespace qvox

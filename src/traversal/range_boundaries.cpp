#include "traversal/range_boundaries.h"

#include <algorithm>

#include "dom/tree.h"

namespace qvox {

namespace {

bool counts_children(const Node* node) {
    switch (node->getNodeType()) {
        case Node::ELEMENT_NODE:
        case Node::ATTRIBUTE_NODE:
        case Node::ENTITY_REFERENCE_NODE:
        case Node::DOCUMENT_NODE:
        case Node::DOCUMENT_FRAGMENT_NODE: return true;
        default: return false;
    }
}

// On the way up from a node, by one of Tree's functions.
class Climber {
public:
    using Step = Node* (*)(const Node*);

    Climber(Node* start, Step stepUp) : node(start), step(stepUp) {
        for (const Node* above = start; above != nullptr; above = step(above)) ++height;
    }

    void climb() {
        cameFrom = node;
        node = step(node);
        --height;
    }

    Node* node;                // null above the root
    Node* cameFrom = nullptr;  // the child of it on the way
    std::size_t height = 0;    // of the node above nothing: 1 for a root

private:
    Step step;
};

// Leads both up to their lowest common ancestor, or to null.
void meet(Climber& one, Climber& other) {
    while (one.node != other.node) {
        const std::size_t level = std::max(one.height, other.height);
        if (one.height == level) one.climb();
        if (other.height == level) other.climb();
    }
}

}  // namespace

bool counts_units(const Node* node) {
    switch (node->getNodeType()) {
        case Node::TEXT_NODE:
        case Node::CDATA_SECTION_NODE:
        case Node::PROCESSING_INSTRUCTION_NODE:
        case Node::COMMENT_NODE: return true;
        default: return false;
    }
}

int max_offset(const Node* node) {
    if (counts_units(node)) return node->getNodeValue().length();
    return Tree::childListOf(node).getLength();
}

Node* child_behind(const BoundaryPoint& point) {
    if (point.offset == 0) return Tree::firstChildOf(point.container);
    return Tree::childListOf(point.container).item(point.offset);
}

int child_index(const Node* parent, const Node* child) {
    return static_cast<int>(Tree::childIndexOf(parent, child));
}

Node* root_of(Node* node) {
    Node* root = nullptr;
    for (; node != nullptr; node = Tree::parentOf(node)) root = node;
    return root;
}

Node* common_ancestor(Node* one, Node* other) {
    Climber first(one, Tree::parentOf);
    Climber second(other, Tree::parentOf);
    meet(first, second);
    return first.node;
}

TagPlace place_of(const BoundaryPoint& point) {
    if (!counts_children(point.container)) return {point.container, TagPlace::OPENING};
    if (Node* child = child_behind(point)) return {child, TagPlace::OPENING};
    if (Node* last = Tree::lastChildOf(point.container)) return {last, TagPlace::CLOSING};
    return {point.container, TagPlace::BETWEEN};
}

int compare_places(const TagPlace& one, const TagPlace& other) {
    if (one.node == other.node) return one.side - other.side;
    Climber first(one.node, Tree::listOwnerOf);
    Climber second(other.node, Tree::listOwnerOf);
    meet(first, second);
    if (first.cameFrom == nullptr) return one.side == TagPlace::OPENING ? -1 : 1;
    if (second.cameFrom == nullptr) return other.side == TagPlace::OPENING ? 1 : -1;
    return child_index(first.node, first.cameFrom) - child_index(first.node, second.cameFrom);
}

}  // namespace qvox

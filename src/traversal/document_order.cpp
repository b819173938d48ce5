#include "traversal/document_order.h"

#include "dom/tree.h"

namespace qvox {

Node* documentNext(const Node* node) {
    if (Node* child = Tree::firstChildOf(node)) return child;
    for (; node != nullptr; node = Tree::parentOf(node)) {
        if (Node* sibling = Tree::nextSiblingNoLock(node)) return sibling;
    }
    return nullptr;
}

Node* documentPrevious(const Node* node) {
    Node* previous = Tree::previousSiblingNoLock(node);
    if (previous == nullptr) return Tree::parentOf(node);
    while (Node* child = Tree::lastChildOf(previous)) previous = child;
    return previous;
}

}  // namespace qvox

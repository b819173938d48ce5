/// \file
/// The walk that all libraries do alike: down to the first child, else on to the next sibling, else
/// up to the first ancestor that has one.
#ifndef QVOX_BENCH_TREE_WALK_H
#define QVOX_BENCH_TREE_WALK_H

namespace bench {

/// `Links` has the static functions `firstChild`, `nextSibling` and `parent`, for a node that is
/// false where there is none.
template <class Links, class Node, class Visit>
void walkTree(Node root, const Visit& visit) {
    for (Node node = root;;) {
        visit(node);
        if (Node child = Links::firstChild(node)) {
            node = child;
            continue;
        }
        for (;;) {
            if (node == root) return;
            if (Node next = Links::nextSibling(node)) {
                node = next;
                break;
            }
            node = Links::parent(node);
        }
    }
}

/// Counts the nodes for which `isElement` is true.
template <class Links, class Node, class IsElement>
long countElements(Node root, const IsElement& isElement) {
    long elements = 0;
    walkTree<Links>(root, [&](const auto& node) { elements += isElement(node) ? 1 : 0; });
    return elements;
}

}  // namespace bench

#endif

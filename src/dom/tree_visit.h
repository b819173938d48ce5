// The one depth-first visit on which copying, normalising and all searches stand.
#pragma once

#include <cstddef>

#include <qvox/dom.h>

#include "traversal/tree_walker.h"

namespace qvox {

// Gives a node and all that is shown below it, in document order. What isn't shown is passed over
// with its whole subtree. Needs no memory on the way.
class TreeVisit {
public:
    // At the root, which is there whether shown or not.
    TreeVisit(Node* root, unsigned long whatToShow) : walker(root, whatToShow, nullptr, false) {}

    // The node being visited. Its children may change as long as it is.
    Node* node() const { return walker.getCurrentNode(); }
    // How far it is below the root.
    std::size_t depth() const { return level; }
    // Goes to the next node. False behind the last one, where the visit stands at its root again.
    bool next();

private:
    TreeWalkerImpl walker;
    std::size_t level = 0;
};

}  // namespace qvox

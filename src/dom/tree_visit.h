// The one depth-first visit on which copying, normalising and all searches stand.
#pragma once

#include <qvox/dom.h>

namespace qvox {

// The state of one visit, made on the stack for it.
struct TreeVisit {
    using Step = void (*)(TreeVisit& visit);

    Step pre = nullptr;            // called at every node before its children
    Step post = nullptr;           // called after them, only with `deep`
    bool deep = false;             // go down to the children
    TreeWalker* walker = nullptr;  // at the node being visited
    Xstring first = "";            // arguments of a search
    Xstring second = "";
    void* current = nullptr;     // carried from a node to its children: each child sees what its
                                 // parent's `pre` left here
    Node* found = nullptr;       // result of a search for one node
    Document* target = nullptr;  // the receiving document of an import
};

// Visits the walker's node and, with `deep`, what the walker shows below it. What it doesn't show
// is passed over with its whole subtree.
void runVisit(TreeVisit& visit);

}  // namespace qvox

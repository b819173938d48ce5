#include "dom/tree_visit.h"

#include "dom/tree.h"

namespace qvox {

bool TreeVisit::next() {
    if (walker.firstChild() != nullptr) {
        ++level;
        return true;
    }
    for (; level > 0; --level) {
        if (walker.nextSibling() != nullptr) return true;
        walker.setCurrentNode(Tree::listOwnerOf(node()));
    }
    return false;
}

}  // namespace qvox

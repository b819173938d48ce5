#include "dom/tree_visit.h"

#include <vector>

namespace qvox {

namespace {

// A node whose children are being visited, and what its `pre` left for them.
struct OpenNode {
    Node* node;
    void* current;
};

// Calls `pre` at the walker's node and opens it.
void enter(TreeVisit& visit, std::vector<OpenNode>& path) {
    if (visit.pre != nullptr) visit.pre(visit);
    path.push_back({visit.walker->getCurrentNode(), visit.current});
}

void leave(TreeVisit& visit, std::vector<OpenNode>& path) {
    visit.walker->setCurrentNode(path.back().node);
    visit.current = path.back().current;
    path.pop_back();
    if (visit.post != nullptr) visit.post(visit);
}

}  // namespace

void runVisit(TreeVisit& visit) {
    if (!visit.deep) {
        if (visit.pre != nullptr) visit.pre(visit);
        return;
    }
    std::vector<OpenNode> path;
    enter(visit, path);
    bool goingDown = true;
    while (!path.empty()) {
        TreeWalker& walker = *visit.walker;
        if ((goingDown ? walker.firstChild() : walker.nextSibling()) != nullptr) {
            visit.current = path.back().current;
            enter(visit, path);
            goingDown = true;
        } else {
            leave(visit, path);
            goingDown = false;
        }
    }
}

}  // namespace qvox

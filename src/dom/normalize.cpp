#include "dom/normalize.h"

#include <vector>

#include "dom/tree.h"
#include "dom/tree_visit.h"
#include "traversal/tree_walker.h"

namespace qvox {

namespace {

bool may_hold_text(const Node* node) {
    switch (node->getNodeType()) {
        case Node::ELEMENT_NODE:
        case Node::ATTRIBUTE_NODE:
        case Node::ENTITY_REFERENCE_NODE:
        case Node::ENTITY_NODE:
        case Node::DOCUMENT_FRAGMENT_NODE: return true;
        default: return false;
    }
}

bool is_text(const Node* node) { return node != nullptr && node->getNodeType() == Node::TEXT_NODE; }

// The nodes whose text has gone to another leave the list together, in one pass.
void merge_step(TreeVisit& visit) {
    Node* node = visit.walker->getCurrentNode();
    NodeListImpl* children = Tree::childrenOf(node);
    if (children == nullptr || !may_hold_text(node)) return;
    std::vector<Node*> merged;
    Node* run = nullptr;
    for (Node* child = children->front(); child != nullptr; child = children->after(child)) {
        if (is_text(run) && is_text(child)) {
            static_cast<Text*>(run)->appendData(static_cast<Text*>(child)->getData());
            merged.push_back(child);
        } else {
            run = child;
        }
    }
    children->removeAll(merged);
    for (Node* leftOver : merged) Tree::abandon(leftOver);
}

}  // namespace

void normalize_tree(Node* root) {
    TreeWalkerImpl walker(root, NodeFilter::SHOW_ALL, nullptr, false);
    TreeVisit visit;
    visit.pre = merge_step;
    visit.deep = true;
    visit.walker = &walker;
    runVisit(visit);
}

}  // namespace qvox

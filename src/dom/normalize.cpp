#include "dom/normalize.h"

#include "dom/document.h"
#include "dom/tree.h"
#include "dom/tree_visit.h"

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

// A node whose text has gone to another is left to the document of the tree. Where that isn't known
// it is looked for from the parent on: a tree without one, such as a document type's, may hold
// nodes of several.
void merge_texts(const Node* parent, DocumentImpl* treeDocument) {
    if (!may_hold_text(parent)) return;
    Node* run = nullptr;
    Node* next = nullptr;
    for (Node* child = Tree::firstChildOf(parent); child != nullptr; child = next) {
        next = Tree::nextInList(child);
        if (!is_text(run) || !is_text(child)) {
            run = child;
            continue;
        }
        static_cast<Text*>(run)->appendData(static_cast<Text*>(child)->getData());
        Tree::release(child);
        if (treeDocument == nullptr) treeDocument = Tree::treeDocumentOfLiving(parent);
        Tree::abandon(child, treeDocument);
    }
}

}  // namespace

void normalize_tree(Node* root) {
    DocumentImpl* const treeDocument = Tree::treeDocumentOfLiving(root);
    TreeVisit visit(root, NodeFilter::SHOW_ALL);
    do {
        merge_texts(visit.node(), treeDocument);
    } while (visit.next());
}

}  // namespace qvox

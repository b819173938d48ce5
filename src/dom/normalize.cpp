#include "dom/normalize.h"

#include <vector>

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

// The nodes whose text has gone to another, which leave the list together, in one pass; also where
// memory runs out before the last.
class MergedNodes {
public:
    // A null document is looked for from the parent on: a tree without one, such as a document
    // type's, may hold nodes of several.
    MergedNodes(const Node* parentNode, NodeListImpl& list, DocumentImpl* document)
        : parent(parentNode), children(list), treeDocument(document) {}
    MergedNodes(const MergedNodes&) = delete;
    MergedNodes& operator=(const MergedNodes&) = delete;
    ~MergedNodes() {
        if (nodes.empty()) return;
        children.removeAll(nodes);
        DocumentImpl* const keeper =
            treeDocument != nullptr ? treeDocument : Tree::treeDocumentOfLiving(parent);
        for (Node* node : nodes) Tree::abandon(node, keeper);
    }

    void merge(Text* run, Text* node) {
        if (nodes.size() == nodes.capacity()) nodes.reserve(2 * nodes.size() + 1);
        run->appendData(node->getData());
        nodes.push_back(node);
    }

private:
    const Node* parent;
    NodeListImpl& children;
    DocumentImpl* treeDocument;
    std::vector<Node*> nodes;
};

void merge_texts(const Node* node, DocumentImpl* treeDocument) {
    NodeListImpl* children = Tree::childrenOf(node);
    if (children == nullptr || !may_hold_text(node)) return;
    MergedNodes merged(node, *children, treeDocument);
    Node* run = nullptr;
    for (Node* child = children->front(); child != nullptr; child = children->after(child)) {
        if (is_text(run) && is_text(child)) {
            merged.merge(static_cast<Text*>(run), static_cast<Text*>(child));
        } else {
            run = child;
        }
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

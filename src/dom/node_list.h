// The node lists: those that are a node's own storage, and the results of searches.
#pragma once

#include <vector>

#include <qvox/dom.h>

#include "dom/collection.h"

namespace qvox {

class DocumentImpl;

// Children, declarations, attribute definitions. Live, since it is the storage itself.
class NodeListImpl final : public NodeList, public NodeCollection {
public:
    using NodeCollection::NodeCollection;

    int getLength() const override { return static_cast<int>(size()); }
    Node* item(int index) const override {
        return index < 0 ? nullptr : at(static_cast<std::size_t>(index));
    }
};

// The result of a search, filled anew by each search on the same node. It owns nothing.
class ResultList final : public NodeList {
public:
    // The document that owns the list and the node that its searches are made on.
    ResultList(DocumentImpl* searchedDocument, Node* searchedNode)
        : document(searchedDocument), context(searchedNode) {}

    int getLength() const override { return static_cast<int>(nodes.size()); }
    Node* item(int index) const override;
    DocumentImpl* getDocument() const { return document; }
    Node* getContext() const { return context; }

    void add(Node* node) { nodes.push_back(node); }
    void clear() { nodes.clear(); }
    // The same, giving up the memory.
    void reset() { std::vector<Node*>().swap(nodes); }

private:
    DocumentImpl* document;
    Node* context;
    std::vector<Node*> nodes;
};

// The list of every node that never had a child.
extern NodeListImpl emptyNodeList;

}  // namespace qvox

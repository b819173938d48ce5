#pragma once

#include <qvox/traversal.h>

#include "traversal/node_test.h"

namespace qvox {

class NodeIteratorImpl final : public NodeIterator {
public:
    NodeIteratorImpl(Node* rootNode, unsigned long whatToShow, NodeFilter* filter, bool expand)
        : test{whatToShow, filter}, expandEntityReferences(expand), root(rootNode) {}

    void detach() override;
    NodeFilter* getFilter() const override { return test.filter; }
    Node* getRoot() const override { return root; }
    unsigned long getWhatToShow() const override { return test.whatToShow; }
    bool getExpandEntityReferences() const override { return expandEntityReferences; }
    Node* nextNode() override;
    Node* previousNode() override;

private:
    using Step = Node* (*)(const Node*);

    Node* advance(Step step);

    NodeTest test;
    bool expandEntityReferences;
    Node* root;               // null when detached
    Node* current = nullptr;  // null at the start, and behind the end of a walk
};

}  // namespace qvox

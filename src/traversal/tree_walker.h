#pragma once

#include <qvox/traversal.h>

#include "traversal/node_test.h"

namespace qvox {

class TreeWalkerImpl final : public TreeWalker {
public:
    TreeWalkerImpl(Node* rootNode, unsigned long whatToShow, NodeFilter* filter, bool expand)
        : current(rootNode),
          test{whatToShow, filter},
          expandEntityReferences(expand),
          root(rootNode) {}

    Node* firstChild() override;
    Node* getCurrentNode() const override { return current; }
    NodeFilter* getFilter() const override { return test.filter; }
    Node* getRoot() const override { return root; }
    unsigned long getWhatToShow() const override { return test.whatToShow; }
    bool getExpandEntityReferences() const override { return expandEntityReferences; }
    Node* lastChild() override;
    Node* nextSibling() override;
    Node* nextNode() override;
    Node* parentNode() override;
    Node* previousNode() override;
    Node* previousSibling() override;
    void setCurrentNode(Node* node) override;

private:
    using Step = Node* (*)(const Node*);

    // Goes to the first of the candidates that is shown: `candidate`, and what `next` makes of it.
    Node* settle(Node* candidate, Step next);

    Node* current;
    NodeTest test;
    bool expandEntityReferences;
    Node* root;
};

}  // namespace qvox

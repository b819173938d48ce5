#include "traversal/node_iterator.h"

#include "traversal/document_order.h"

namespace qvox {

void NodeIteratorImpl::detach() {
    root = nullptr;
    test.filter = nullptr;
    current = nullptr;
}

Node* NodeIteratorImpl::nextNode() { return advance(documentNext); }

Node* NodeIteratorImpl::previousNode() { return advance(documentPrevious); }

Node* NodeIteratorImpl::advance(Step step) {
    if (root == nullptr) {
        throw DOMException(DOMException::INVALID_STATE_ERR, "NodeIterator already detached");
    }
    current = current != nullptr ? step(current) : root;
    while (current != nullptr && !test.passes(current)) current = step(current);
    return current;
}

}  // namespace qvox

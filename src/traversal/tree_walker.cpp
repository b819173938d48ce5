#include "traversal/tree_walker.h"

#include "dom/tree.h"
#include "traversal/document_order.h"

namespace qvox {

Node* TreeWalkerImpl::settle(Node* candidate, Step next) {
    while (candidate != nullptr && !test.passes(candidate)) candidate = next(candidate);
    if (candidate != nullptr) current = candidate;
    return candidate;
}

Node* TreeWalkerImpl::firstChild() {
    return settle(Tree::firstChildOf(current), Tree::nextSiblingNoLock);
}

Node* TreeWalkerImpl::lastChild() {
    return settle(Tree::lastChildOf(current), Tree::previousSiblingNoLock);
}

Node* TreeWalkerImpl::nextSibling() {
    return settle(Tree::nextSiblingNoLock(current), Tree::nextSiblingNoLock);
}

Node* TreeWalkerImpl::previousSibling() {
    return settle(Tree::previousSiblingNoLock(current), Tree::previousSiblingNoLock);
}

Node* TreeWalkerImpl::parentNode() { return settle(Tree::parentOf(current), Tree::parentOf); }

Node* TreeWalkerImpl::nextNode() { return settle(documentNext(current), documentNext); }

Node* TreeWalkerImpl::previousNode() { return settle(documentPrevious(current), documentPrevious); }

void TreeWalkerImpl::setCurrentNode(Node* node) {
    if (node == nullptr) {
        throw DOMException(DOMException::NOT_SUPPORTED_ERR, "NodeIterator root is null");
    }
    current = node;
}

}  // namespace qvox

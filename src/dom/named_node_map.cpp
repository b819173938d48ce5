#include "dom/named_node_map.h"

#include "dom/attr.h"
#include "dom/tree.h"

namespace qvox {

NamedNodeMapImpl emptyNamedNodeMap(nullptr);

namespace {

Node* found_or_raise(Node* node) {
    if (node == nullptr) throw DOMException(DOMException::NOT_FOUND_ERR, "named node not found");
    return node;
}

// An attribute belongs to the element whose map it is in.
void set_owner_element(Node* node, Node* owner) {
    if (node->getNodeType() != Node::ATTRIBUTE_NODE) return;
    if (owner->getNodeType() != Node::ELEMENT_NODE) return;
    static_cast<AttrImpl*>(node)->setOwnerElement(static_cast<Element*>(owner));
}

}  // namespace

Node* NamedNodeMapImpl::getNamedItem(const Xstring& name) const {
    for (std::size_t i = 0; i < size(); ++i) {
        if (at(i)->getNodeName() == name) return at(i);
    }
    return nullptr;
}

Node* NamedNodeMapImpl::getNamedItemNS(const Xstring& namespaceURI,
                                       const Xstring& localName) const {
    for (std::size_t i = 0; i < size(); ++i) {
        if (at(i)->getNamespaceURI() == namespaceURI && at(i)->getLocalName() == localName) {
            return at(i);
        }
    }
    return nullptr;
}

Node* NamedNodeMapImpl::removeNamedItem(const Xstring& name) {
    if (this == &emptyNamedNodeMap) return found_or_raise(nullptr);
    const DocumentGuard guard(getOwner());
    return found_or_raise(takeItem(name));
}

Node* NamedNodeMapImpl::removeNamedItemNS(const Xstring& namespaceURI, const Xstring& localName) {
    if (this == &emptyNamedNodeMap) return found_or_raise(nullptr);
    const DocumentGuard guard(getOwner());
    return found_or_raise(takeItemNS(namespaceURI, localName));
}

Node* NamedNodeMapImpl::setNamedItem(Node* node) { return putChecked(node, false); }

Node* NamedNodeMapImpl::setNamedItemNS(Node* node) { return putChecked(node, true); }

Node* NamedNodeMapImpl::putChecked(Node* node, bool byNamespace) {
    if (this == &emptyNamedNodeMap) {
        throw DOMException(DOMException::NOT_SUPPORTED_ERR, "the empty map can't be changed");
    }
    if (node == nullptr) return nullptr;
    if (Tree::owns(node, getOwner())) {
        throw DOMException(DOMException::HIERARCHY_REQUEST_ERR, "child node is not acceptable");
    }
    const DocumentGuard guard(getOwner());
    return putItem(node, byNamespace);
}

Node* NamedNodeMapImpl::putItem(Node* node, bool byNamespace) {
    if (byNamespace && node->getLocalName().isNull()) return nullptr;
    if (node->getNodeName().length() == 0) return nullptr;
    Node* replaced = getNamedItem(node->getNodeName());
    if (replaced != nullptr) remove(replaced);
    append(node, NO_PARENT);
    Tree::noteTravel(getOwner(), node);
    set_owner_element(node, getOwner());
    return replaced;
}

Node* NamedNodeMapImpl::takeItem(const Xstring& name) { return take(getNamedItem(name)); }

Node* NamedNodeMapImpl::takeItemNS(const Xstring& namespaceURI, const Xstring& localName) {
    return take(getNamedItemNS(namespaceURI, localName));
}

Node* NamedNodeMapImpl::take(Node* node) {
    if (node == nullptr) return nullptr;
    if (node->getNodeType() == Node::ATTRIBUTE_NODE) {
        auto* attribute = static_cast<AttrImpl*>(node);
        if (!attribute->getDefaultValue().isNull()) {
            attribute->setValue(attribute->getDefaultValue());
            return attribute;
        }
    }
    remove(node);
    return node;
}

}  // namespace qvox

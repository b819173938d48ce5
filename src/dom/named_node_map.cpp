#include "dom/named_node_map.h"

#include <optional>

#include "dom/attr.h"
#include "dom/element.h"
#include "dom/tree.h"

namespace qvox {

NamedNodeMapImpl emptyNamedNodeMap(nullptr);

namespace {

Node* found_or_raise(Node* node) {
    if (node == nullptr) throw DOMException(DOMException::NOT_FOUND_ERR, "named node not found");
    return node;
}

}  // namespace

Node* find_named(Node* first, const Xstring& name) {
    Node* node = first;
    while (node != nullptr && node->getNodeName() != name) node = NodeLinks::next(node);
    return node;
}

Node* find_named_ns(Node* first, const Xstring& namespaceURI, const Xstring& localName) {
    Node* node = first;
    while (node != nullptr &&
           (node->getNamespaceURI() != namespaceURI || node->getLocalName() != localName)) {
        node = NodeLinks::next(node);
    }
    return node;
}

void change_name(Node* node) {
    NodeCollection* map = nullptr;
    switch (NodeLinks::standingOf(node)) {
        case Standing::ATTRIBUTE:
            map =
                static_cast<ElementImpl*>(NodeLinks::holderOf(node))->attributeSlot().collection();
            break;
        case Standing::COLLECTED: map = NodeLinks::collectionOf(node); break;
        default: break;
    }
    if (map != nullptr) map->forgetNames();
}

// A map of many has an index, which knows all but which of several is the first.
Node* NamedNodeMapImpl::getNamedItem(const Xstring& name) const {
    if (const NameIndex* const index = byNames()) {
        if (const std::optional<Node*> found = index->find(name)) return *found;
    }
    return find_named(front(), name);
}

Node* NamedNodeMapImpl::getNamedItemNS(const Xstring& namespaceURI,
                                       const Xstring& localName) const {
    if (const NameIndex* const index = byNames()) {
        if (const std::optional<Node*> found = index->findNS(namespaceURI, localName)) {
            return *found;
        }
    }
    return find_named_ns(front(), namespaceURI, localName);
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
    if (replaced != nullptr) Tree::release(replaced);
    add(node);
    return replaced;
}

// An element is the holder of its attributes itself, whether it has a map by then or not.
void NamedNodeMapImpl::add(Node* node) {
    Tree::release(node);
    Tree::touch(getOwner());
    Tree::touch(node);
    Tree::noteTravel(getOwner(), node);
    link(node, nullptr);
    if (getOwner()->getNodeType() == Node::ELEMENT_NODE) {
        NodeLinks::stand(node, getOwner(), Standing::ATTRIBUTE);
    } else {
        NodeLinks::stand(node, this, Standing::COLLECTED);
    }
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
    Tree::release(node);
    return node;
}

}  // namespace qvox

// The attributes of an element, and the entities and notations of a document type: nodes in order
// of arrival, found by name.
#pragma once

#include <qvox/dom.h>

#include "dom/collection.h"

namespace qvox {

class NamedNodeMapImpl final : public NamedNodeMap, public NodeCollection {
public:
    using NodeCollection::NodeCollection;

    int getLength() const override { return static_cast<int>(size()); }
    Node* getNamedItem(const Xstring& name) const override;
    Node* getNamedItemNS(const Xstring& namespaceURI, const Xstring& localName) const override;
    Node* item(int index) const override {
        return index < 0 ? nullptr : at(static_cast<std::size_t>(index));
    }
    Node* removeNamedItem(const Xstring& name) override;
    Node* removeNamedItemNS(const Xstring& namespaceURI, const Xstring& localName) override;
    Node* setNamedItem(Node* node) override;
    Node* setNamedItemNS(Node* node) override;

    // The unlocked forms. putItem returns the node that was replaced or null; it takes no node
    // without name, and with `byNamespace` none without local name. The others return null for a
    // name that isn't there; an attribute with a declared default stays and takes that value.
    Node* putItem(Node* node, bool byNamespace);
    Node* takeItem(const Xstring& name);
    Node* takeItemNS(const Xstring& namespaceURI, const Xstring& localName);

    // Puts a node in at the end, out of any other place.
    void add(Node* node);

private:
    Node* take(Node* node);
    Node* putChecked(Node* node, bool byNamespace);
};

// The first node with that name, or with that namespace and local name, in a chain; or null.
Node* find_named(Node* first, const Xstring& name);
Node* find_named_ns(Node* first, const Xstring& namespaceURI, const Xstring& localName);

// The name of a node, which may stand in a map, is about to change.
void change_name(Node* node);

// The map of every element without attributes.
extern NamedNodeMapImpl emptyNamedNodeMap;

}  // namespace qvox

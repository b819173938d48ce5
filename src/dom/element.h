#pragma once

#include <qvox/dom.h>

#include "dom/attr.h"
#include "dom/name_pool.h"
#include "dom/named_node_map.h"
#include "dom/node_memory.h"

namespace qvox {

class ElementImpl final : public Element {
public:
    ElementImpl(const Unit* namespaceURI, const Unit* qualifiedName, Document* document);
    // The same with a name in the document's pool.
    ElementImpl(const NodeName* elementName, const NodeHome& home) noexcept
        : Element(home), name(elementName) {}

    int getNodeType() const override { return ELEMENT_NODE; }
    const Xstring& getNodeName() const override { return name->getName(); }
    const Xstring& getNamespaceURI() const override { return name->getNamespaceURI(); }
    const Xstring& getLocalName() const override { return name->getLocalName(); }
    const Xstring& getPrefix() const override { return name->getPrefix(); }
    void setPrefix(const Xstring& prefix) override;
    NamedNodeMap* getAttributes() const override { return &attributeMap(); }
    bool hasAttributes() const override { return !attributeSlot().isEmpty(); }

    const Xstring& getAttribute(const Xstring& attributeName) const override;
    const Xstring& getAttributeNS(const Xstring& namespaceURI,
                                  const Xstring& localName) const override;
    Attr* getAttributeNode(const Xstring& attributeName) const override;
    Attr* getAttributeNodeNS(const Xstring& namespaceURI, const Xstring& localName) const override;
    NodeList* getElementsByTagName(const Xstring& tagName) override;
    NodeList* getElementsByTagNameNS(const Xstring& namespaceURI,
                                     const Xstring& localName) override;
    const Xstring& getTagName() const override { return getNodeName(); }
    bool hasAttribute(const Xstring& attributeName) const override;
    bool hasAttributeNS(const Xstring& namespaceURI, const Xstring& localName) const override;
    void removeAttribute(const Xstring& attributeName) override;
    void removeAttributeNS(const Xstring& namespaceURI, const Xstring& localName) override;
    Attr* removeAttributeNode(Attr* attr) override;
    void setAttribute(const Xstring& attributeName, const Xstring& value) override;
    void setAttributeNS(const Xstring& namespaceURI, const Xstring& qualifiedName,
                        const Xstring& value) override;
    Attr* setAttributeNode(Attr* attr) override { return attach(attr, false); }
    Attr* setAttributeNodeNS(Attr* attr) override { return attach(attr, true); }

    const NodeName& getNames() const { return *name; }

    NodeSlot attributeSlot() const { return NodeSlot(attributes); }
    // What is among the attributes, which may be a node of another type.
    Node* firstAttribute() const { return attributeSlot().front(); }
    // Puts an attribute without a place in at the end, in a tree that is being made.
    void addNew(Attr* attr) {
        attributeSlot().link(attr, nullptr);
        NodeLinks::stand(attr, this, Standing::ATTRIBUTE);
    }

private:
    // The map for reading: the shared empty one where there never were any.
    bool hasManyAttributes() const;
    NamedNodeMapImpl& attributeMap() const;
    // The map for writing, made if there is none.
    NamedNodeMapImpl& ownAttributeMap();
    Attr* attach(Attr* attr, bool byNamespace);
    Attr* put(Attr* attr, bool byNamespace);
    void attachNew(const AttrImpl::Init& init, bool byNamespace);
    void drop(Node* attribute);

    const NodeName* name;
    mutable std::atomic<void*> attributes{nullptr};
};

static_assert(sizeof(void*) != 8 || sizeof(ElementImpl) == 64, "an element is a cache line");

}  // namespace qvox

#pragma once

#include <qvox/dom.h>

#include "dom/attr.h"
#include "dom/named_node_map.h"
#include "dom/node_list.h"
#include "dom/qualified_name.h"

namespace qvox {

class ElementImpl : public Element {
public:
    ElementImpl(const Unit* namespaceURI, const Unit* qualifiedName, bool withAttributes,
                Document* document);
    // The same with pooled names and without attributes.
    ElementImpl(const QualifiedName& qualifiedName, Document* document) noexcept;
    ~ElementImpl() override;

    int getNodeType() const override { return ELEMENT_NODE; }
    const Xstring& getNodeName() const override { return name.getName(); }
    const Xstring& getNamespaceURI() const override { return name.getNamespaceURI(); }
    const Xstring& getLocalName() const override { return name.getLocalName(); }
    const Xstring& getPrefix() const override { return name.getPrefix(); }
    void setPrefix(const Xstring& prefix) override;
    NamedNodeMap* getAttributes() const override { return &attributeMap(); }
    bool hasAttributes() const override { return !attributeMap().isEmpty(); }

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

    // Where the children go: inside the element, since most have some.
    NodeListImpl& childStorage() { return ownChildren; }

    // The map for reading: the shared empty one where there is none.
    NamedNodeMapImpl& attributeMap() const;
    // The map for writing, made if there is none.
    NamedNodeMapImpl& ownAttributeMap();

protected:
    // Not the element's to free: it is to be taken back, with null, before it goes.
    void lendAttributeMap(NamedNodeMapImpl* map) { attributes = map; }

private:
    Attr* attach(Attr* attr, bool byNamespace);
    Attr* put(Attr* attr, bool byNamespace);
    void attachNew(const AttrImpl::Init& init, bool byNamespace);
    void drop(Node* attribute);

    QualifiedName name;
    NamedNodeMapImpl* attributes;
    NodeListImpl ownChildren;
};

// An element that has its attribute map inside itself, so that both are one piece of memory.
class ElementWithMap final : public ElementImpl {
public:
    // For `count` attributes. More than one go to those slots, which live as long as the element.
    ElementWithMap(const QualifiedName& qualifiedName, Node** slots, std::size_t count,
                   Document* document) noexcept
        : ElementImpl(qualifiedName, document), map(this, slots, count) {
        lendAttributeMap(&map);
    }
    ~ElementWithMap() override { lendAttributeMap(nullptr); }

private:
    NamedNodeMapImpl map;
};

}  // namespace qvox

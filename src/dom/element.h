#pragma once

#include <qvox/dom.h>

#include "dom/attr.h"
#include "dom/named_node_map.h"
#include "dom/node_list.h"
#include "dom/qualified_name.h"

namespace qvox {

class ElementImpl final : public Element {
public:
    ElementImpl(const Unit* namespaceURI, const Unit* qualifiedName, bool withAttributes,
                Document* document);
    // The same with pooled names. With `hasMapBehind` its attribute map is one that the caller
    // builds right behind the element, in the same piece of memory.
    ElementImpl(const QualifiedName& qualifiedName, bool hasMapBehind, Document* document);
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

    // Where a map behind the element stands.
    NamedNodeMapImpl* mapBehind() { return reinterpret_cast<NamedNodeMapImpl*>(this + 1); }

private:
    Attr* attach(Attr* attr, bool byNamespace);
    Attr* put(Attr* attr, bool byNamespace);
    void attachNew(const AttrImpl::Init& init, bool byNamespace);
    void drop(Node* attribute);

    QualifiedName name;
    NamedNodeMapImpl* attributes;
    NodeListImpl ownChildren;
};

}  // namespace qvox

#pragma once

#include <qvox/dom.h>

#include "dom/qualified_name.h"
#include "text/lent_text.h"

namespace qvox {

class AttrImpl final : public Attr {
public:
    // What a new attribute is made of. Null texts are absent.
    struct Init {
        const Unit* namespaceURI = nullptr;
        const Unit* qualifiedName = nullptr;
        const Unit* value = nullptr;
        bool specified = false;
        const Unit* attributeType = nullptr;  // as declared
        const Unit* defaultValue = nullptr;   // as declared
        Element* ownerElement = nullptr;
    };

    AttrImpl(const Init& init, Document* document);

    // The same of names that are in the document's pool, with a value that lies with the node.
    struct PooledInit {
        QualifiedName name;
        const PooledName* attributeType;  // or null
        const PooledName* defaultValue;   // or null
        bool specified;
        Element* ownerElement;
    };

    AttrImpl(const PooledInit& init, const LentText& text, Document* document) noexcept;

    int getNodeType() const override { return ATTRIBUTE_NODE; }
    const Xstring& getNodeName() const override { return name.getName(); }
    const Xstring& getNamespaceURI() const override { return name.getNamespaceURI(); }
    const Xstring& getLocalName() const override { return name.getLocalName(); }
    const Xstring& getPrefix() const override { return name.getPrefix(); }
    void setPrefix(const Xstring& prefix) override;
    const Xstring& getNodeValue() const override { return value; }
    void setNodeValue(const Xstring& nodeValue) override { value = nodeValue; }

    const Xstring& getName() const override { return getNodeName(); }
    Element* getOwnerElement() const override { return ownerElement; }
    bool getSpecified() const override { return specified; }
    const Xstring& getValue() const override { return getNodeValue(); }
    void setValue(const Xstring& newValue) override;

    // Null where nothing is declared.
    const Xstring& getAttributeType() const { return text_of(attributeType); }
    const Xstring& getDefaultValue() const { return text_of(defaultValue); }
    void setOwnerElement(Element* element) { ownerElement = element; }

private:
    QualifiedName name;
    const PooledName* attributeType;
    const PooledName* defaultValue;
    Xstring value;
    bool specified;
    Element* ownerElement;
};

}  // namespace qvox

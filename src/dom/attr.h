#pragma once

#include <qvox/dom.h>

#include "dom/name_pool.h"
#include "dom/node_memory.h"
#include "dom/tree.h"
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
    };

    AttrImpl(const Init& init, Document* document);

    // The same of a name in the document's pool, with a value that lies with the node.
    AttrImpl(const NodeName* attributeName, const LentText& text, bool specified,
             const NodeHome& home) noexcept;

    int getNodeType() const override { return ATTRIBUTE_NODE; }
    const Xstring& getNodeName() const override { return name->getName(); }
    const Xstring& getNamespaceURI() const override { return name->getNamespaceURI(); }
    const Xstring& getLocalName() const override { return name->getLocalName(); }
    const Xstring& getPrefix() const override { return name->getPrefix(); }
    void setPrefix(const Xstring& prefix) override;
    const Xstring& getNodeValue() const override { return value; }
    void setNodeValue(const Xstring& nodeValue) override;

    const Xstring& getName() const override { return getNodeName(); }
    Element* getOwnerElement() const override { return Tree::elementWith(this); }
    bool getSpecified() const override { return NodeLinks::isSpecified(this); }
    const Xstring& getValue() const override { return getNodeValue(); }
    void setValue(const Xstring& newValue) override;

    // Null where nothing is declared.
    const Xstring& getAttributeType() const { return text_of(name->attributeType); }
    const Xstring& getDefaultValue() const { return text_of(name->defaultValue); }
    const NodeName& getNames() const { return *name; }

private:
    const NodeName* name;
    Xstring value;
};

}  // namespace qvox

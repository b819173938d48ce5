// The hidden declaration nodes of a document type. They answer the node type 0, which no standard
// type has, so that no mask shows them and no test takes them for something else.
#pragma once

#include <qvox/dom.h>

#include "dom/node_list.h"
#include "text/wide.h"

namespace qvox {

class DeclNode : public Node {
public:
    static constexpr int DECLARATION_NODE = 0;

    enum Kind : int {
        ELEMENT_DECL = 1,
        ATTLIST_DECL = 2,
        ATT_DEF = 3,
        ENTITY_DECL = 4,
        NOTATION_DECL = 5
    };

    int getNodeType() const override { return DECLARATION_NODE; }
    const Xstring& getNodeName() const override { return name; }
    const Xstring& getNodeValue() const override { return value; }
    void setNodeValue(const Xstring& nodeValue) override { value = nodeValue; }
    Kind getKind() const { return kind; }

protected:
    DeclNode(Kind declKind, const Unit* declName, const Unit* declValue);

private:
    Xstring name;
    Xstring value;
    Kind kind;
};

// The value is the content model.
class ElementDecl final : public DeclNode {
public:
    ElementDecl(const Unit* elementName, const Unit* model)
        : DeclNode(ELEMENT_DECL, elementName, model) {}
};

class AttlistDecl final : public DeclNode {
public:
    explicit AttlistDecl(const Unit* elementName)
        : DeclNode(ATTLIST_DECL, elementName, nullptr), attDefs(this) {}

    NodeListImpl& getAttDefs() { return attDefs; }
    const NodeListImpl& getAttDefs() const { return attDefs; }

private:
    NodeListImpl attDefs;
};

// The texts of one attribute; the mode and the default may be null.
class AttDef final : public DeclNode {
public:
    AttDef(const Unit* attributeName, const Unit* typeText, const Unit* modeText,
           const Unit* defaultText);

    const Xstring& getType() const { return type; }
    const Xstring& getMode() const { return mode; }
    const Xstring& getDefaultValue() const { return defaultValue; }

private:
    Xstring type;
    Xstring mode;
    Xstring defaultValue;
};

// The value and the identifiers may be null.
class EntityDecl final : public DeclNode {
public:
    EntityDecl(const Unit* entityName, const Unit* entityValue, const Unit* publicIdentifier,
               const Unit* systemIdentifier, const Unit* notation);

    const Xstring& getPublicId() const { return publicId; }
    const Xstring& getSystemId() const { return systemId; }
    const Xstring& getNotationName() const { return notationName; }

private:
    Xstring publicId;
    Xstring systemId;
    Xstring notationName;
};

// The identifiers may be null.
class NotationDecl final : public DeclNode {
public:
    NotationDecl(const Unit* notationName, const Unit* publicIdentifier,
                 const Unit* systemIdentifier);

    const Xstring& getPublicId() const { return publicId; }
    const Xstring& getSystemId() const { return systemId; }

private:
    Xstring publicId;
    Xstring systemId;
};

// The declaration as text without its closing '>', as in "<!ELEMENT a (b,c)". Values stand in
// double quotes as they are.
Xstring declaration_text(const DeclNode& declaration);

}  // namespace qvox

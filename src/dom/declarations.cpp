#include "dom/declarations.h"

namespace qvox {

namespace {

void add_quoted(Xstring& text, const Xstring& value) {
    text += " \"";
    text += value;
    text += "\"";
}

void add_external_id(Xstring& text, const Xstring& publicId, const Xstring& systemId) {
    if (!publicId.isNull()) {
        text += " PUBLIC";
        add_quoted(text, publicId);
    }
    if (systemId.isNull()) return;
    if (publicId.isNull()) text += " SYSTEM";
    add_quoted(text, systemId);
}

// The blank of the syntax comes back behind a parameter entity's "%".
void add_entity_name(Xstring& text, const Xstring& name) {
    if (*name.data() != '%') {
        text += name;
        return;
    }
    text += "% ";
    text += name.data() + 1;
}

void add_element(Xstring& text, const ElementDecl& declaration) {
    text += "<!ELEMENT ";
    text += declaration.getNodeName();
    text += " ";
    text += declaration.getNodeValue();
}

void add_att_def(Xstring& text, const AttDef& definition) {
    text += " ";
    text += definition.getNodeName();
    text += " ";
    text += definition.getType();
    if (!definition.getMode().isNull()) {
        text += " ";
        text += definition.getMode();
    }
    if (!definition.getDefaultValue().isNull()) add_quoted(text, definition.getDefaultValue());
}

void add_attlist(Xstring& text, const AttlistDecl& declaration) {
    text += "<!ATTLIST ";
    text += declaration.getNodeName();
    for (const Node* node = declaration.getAttDefs().front(); node != nullptr;
         node = NodeLinks::next(node)) {
        add_att_def(text, static_cast<const AttDef&>(*node));
    }
}

void add_entity(Xstring& text, const EntityDecl& declaration) {
    text += "<!ENTITY ";
    add_entity_name(text, declaration.getNodeName());
    add_external_id(text, declaration.getPublicId(), declaration.getSystemId());
    if (!declaration.getNotationName().isNull()) {
        text += " NDATA ";
        text += declaration.getNotationName();
    }
    if (!declaration.getNodeValue().isNull()) add_quoted(text, declaration.getNodeValue());
}

void add_notation(Xstring& text, const NotationDecl& declaration) {
    text += "<!NOTATION ";
    text += declaration.getNodeName();
    add_external_id(text, declaration.getPublicId(), declaration.getSystemId());
}

}  // namespace

DeclNode::DeclNode(Kind declKind, const Unit* declName, const Unit* declValue)
    : Node(nullptr), kind(declKind) {
    name = declName;
    value = declValue;
}

AttDef::AttDef(const Unit* attributeName, const Unit* typeText, const Unit* modeText,
               const Unit* defaultText)
    : DeclNode(ATT_DEF, attributeName, nullptr) {
    type = typeText;
    mode = modeText;
    defaultValue = defaultText;
}

EntityDecl::EntityDecl(const Unit* entityName, const Unit* entityValue,
                       const Unit* publicIdentifier, const Unit* systemIdentifier,
                       const Unit* notation)
    : DeclNode(ENTITY_DECL, entityName, entityValue) {
    publicId = publicIdentifier;
    systemId = systemIdentifier;
    notationName = notation;
}

NotationDecl::NotationDecl(const Unit* notationName, const Unit* publicIdentifier,
                           const Unit* systemIdentifier)
    : DeclNode(NOTATION_DECL, notationName, nullptr) {
    publicId = publicIdentifier;
    systemId = systemIdentifier;
}

Xstring declaration_text(const DeclNode& declaration) {
    Xstring text("");
    switch (declaration.getKind()) {
        case DeclNode::ELEMENT_DECL:
            add_element(text, static_cast<const ElementDecl&>(declaration));
            break;
        case DeclNode::ATTLIST_DECL:
            add_attlist(text, static_cast<const AttlistDecl&>(declaration));
            break;
        case DeclNode::ENTITY_DECL:
            add_entity(text, static_cast<const EntityDecl&>(declaration));
            break;
        case DeclNode::NOTATION_DECL:
            add_notation(text, static_cast<const NotationDecl&>(declaration));
            break;
        case DeclNode::ATT_DEF: break;  // stands inside its list only
    }
    return text;
}

}  // namespace qvox

#include "dom/owned_nodes.h"

#include "dom/declarations.h"
#include "dom/document_type.h"
#include "dom/element.h"
#include "dom/tree.h"

namespace qvox {

namespace {

Node* first_of(const NodeCollection* collection) {
    return collection != nullptr ? collection->front() : nullptr;
}

Node* first_in(DocumentTypeImpl& documentType) {
    if (Node* const entity = first_of(documentType.entityMap())) return entity;
    if (Node* const notation = first_of(documentType.notationMap())) return notation;
    return documentType.getDeclarations().front();
}

Node* first_in(DeclNode& declaration) {
    if (declaration.getKind() != DeclNode::ATTLIST_DECL) return nullptr;
    return static_cast<AttlistDecl&>(declaration).getAttDefs().front();
}

}  // namespace

Node* first_owned_of(const Node& owner) {
    if (Node* const child = Tree::firstChildOf(&owner)) return child;
    auto& node = const_cast<Node&>(owner);
    switch (node.getNodeType()) {
        case Node::ELEMENT_NODE: return static_cast<ElementImpl&>(node).firstAttribute();
        case Node::DOCUMENT_TYPE_NODE: return first_in(static_cast<DocumentTypeImpl&>(node));
        case DeclNode::DECLARATION_NODE: return first_in(static_cast<DeclNode&>(node));
        default: return nullptr;
    }
}

}  // namespace qvox

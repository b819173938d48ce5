#include "dom/owned_nodes.h"

#include "dom/declarations.h"
#include "dom/document_type.h"
#include "dom/element.h"
#include "dom/tree.h"

namespace qvox {

namespace {

NodeCollection* unless_empty(NodeCollection* collection) {
    return collection != nullptr && !collection->isEmpty() ? collection : nullptr;
}

NodeCollection* owned_by(ElementImpl& element) { return unless_empty(&element.attributeMap()); }

NodeCollection* owned_by(DocumentTypeImpl& documentType) {
    if (NodeCollection* entities = unless_empty(documentType.entityMap())) return entities;
    if (NodeCollection* notations = unless_empty(documentType.notationMap())) return notations;
    return unless_empty(&documentType.getDeclarations());
}

NodeCollection* owned_by(DeclNode& declaration) {
    if (declaration.getKind() != DeclNode::ATTLIST_DECL) return nullptr;
    return unless_empty(&static_cast<AttlistDecl&>(declaration).getAttDefs());
}

}  // namespace

NodeCollection* owned_nodes_of(Node& node) {
    if (NodeCollection* children = unless_empty(Tree::childrenOf(&node))) return children;
    switch (node.getNodeType()) {
        case Node::ELEMENT_NODE: return owned_by(static_cast<ElementImpl&>(node));
        case Node::DOCUMENT_TYPE_NODE: return owned_by(static_cast<DocumentTypeImpl&>(node));
        case DeclNode::DECLARATION_NODE: return owned_by(static_cast<DeclNode&>(node));
        default: return nullptr;
    }
}

}  // namespace qvox

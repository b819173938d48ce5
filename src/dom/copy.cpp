#include "dom/copy.h"

#include <vector>

#include "dom/arguments.h"
#include "dom/attr.h"
#include "dom/character_data.h"
#include "dom/document.h"
#include "dom/document_type.h"
#include "dom/element.h"
#include "dom/named_nodes.h"
#include "dom/small_nodes.h"
#include "dom/tree.h"
#include "dom/tree_visit.h"

namespace qvox {

namespace {

Node* copy_element(const ElementImpl& source, Document* target) {
    OwnedNode<ElementImpl> copy(new ElementImpl(units_of(source.getNamespaceURI()),
                                                units_of(source.getTagName()),
                                                source.hasAttributes(), target));
    const NamedNodeMapImpl& attributes = source.attributeMap();
    if (attributes.isEmpty()) return copy.release();
    NamedNodes copies;
    for (std::size_t i = 0; i < attributes.size(); ++i) {
        if (attributes.at(i)->getNodeType() != Node::ATTRIBUTE_NODE) continue;
        Attr* attribute = copy_attribute(static_cast<Attr*>(attributes.at(i)), copy.get(), target);
        copies.put(attribute->getName().data(), attribute);
    }
    copies.moveTo(copy->ownAttributeMap());
    return copy.release();
}

Node* copy_entity(const Entity& source, Document* target) {
    return new EntityImpl(units_of(source.getNodeName()), units_of(source.getPublicId()),
                          units_of(source.getSystemId()), units_of(source.getNotationName()),
                          target);
}

Node* copy_document_type(const DocumentTypeImpl& source) {
    return new DocumentTypeImpl(units_of(source.getName()), units_of(source.getPublicId()),
                                units_of(source.getSystemId()), source.getImplementation());
}

// With a null target the copy belongs to the document of its source.
OwnedNode<Node> copy_node(Node* source, Document* target) {
    if (target == nullptr) target = source->getOwnerDocument();
    const bool isAttribute = source->getNodeType() == Node::ATTRIBUTE_NODE;
    return OwnedNode<Node>(isAttribute ? copy_attribute(static_cast<Attr*>(source), nullptr, target)
                                       : cloneShallow(source, target));
}

}  // namespace

Attr* copy_attribute(const Attr* source, Element* owner, Document* target) {
    const auto& attribute = *static_cast<const AttrImpl*>(source);
    AttrImpl::Init init;
    init.namespaceURI = units_of(attribute.getNamespaceURI());
    init.qualifiedName = units_of(attribute.getName());
    init.value = units_of(attribute.getValue());
    init.specified = attribute.getSpecified();
    init.attributeType = units_of(attribute.getAttributeType());
    init.defaultValue = units_of(attribute.getDefaultValue());
    init.ownerElement = owner;
    return new AttrImpl(init, target);
}

Node* cloneShallow(Node* source, Document* target) {
    switch (source->getNodeType()) {
        case Node::ELEMENT_NODE: return copy_element(*static_cast<ElementImpl*>(source), target);
        case Node::TEXT_NODE: return new TextImpl(units_of(source->getNodeValue()), target);
        case Node::CDATA_SECTION_NODE:
            return new CDATASectionImpl(units_of(source->getNodeValue()), target);
        case Node::ENTITY_REFERENCE_NODE:
            return new EntityReferenceImpl(units_of(source->getNodeName()), target);
        case Node::ENTITY_NODE: return copy_entity(*static_cast<Entity*>(source), target);
        case Node::PROCESSING_INSTRUCTION_NODE:
            return new ProcessingInstructionImpl(units_of(source->getNodeName()),
                                                 units_of(source->getNodeValue()), target);
        case Node::COMMENT_NODE: return new CommentImpl(units_of(source->getNodeValue()), target);
        case Node::DOCUMENT_NODE:
            return new DocumentImpl(static_cast<Document*>(source)->getImplementation());
        case Node::DOCUMENT_TYPE_NODE:
            return copy_document_type(*static_cast<DocumentTypeImpl*>(source));
        case Node::DOCUMENT_FRAGMENT_NODE: return new DocumentFragmentImpl(target);
        case Node::NOTATION_NODE: {
            const auto& notation = *static_cast<Notation*>(source);
            return new NotationImpl(units_of(notation.getNodeName()),
                                    units_of(notation.getPublicId()),
                                    units_of(notation.getSystemId()), target);
        }
        default: return source;
    }
}

// A document that stands below, as one may under a document type, is nobody's: its copy, too, dies
// by itself where a later one fails.
Node* copy_tree(Node* source, bool deep, Document* target) {
    OwnedNode<Node> copy = copy_node(source, target);
    if (!deep) return copy.release();
    std::vector<OwnedNode<Node>> documents;
    TreeVisit visit(source, NodeFilter::SHOW_ALL);
    Node* parent = copy.get();
    for (std::size_t parentDepth = 0; visit.next(); ++parentDepth) {
        for (; parentDepth >= visit.depth(); --parentDepth) parent = Tree::parentOf(parent);
        const bool isDocument = visit.node()->getNodeType() == Node::DOCUMENT_NODE;
        if (isDocument) documents.emplace_back();
        parent = append_owned(parent, copy_node(visit.node(), target));
        if (isDocument) documents.back().reset(parent);
    }
    for (OwnedNode<Node>& document : documents) static_cast<void>(document.release());
    return copy.release();
}

}  // namespace qvox

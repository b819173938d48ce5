#include "dom/copy.h"

#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "dom/arguments.h"
#include "dom/document.h"
#include "dom/document_type.h"
#include "dom/node_maker.h"
#include "dom/tree.h"
#include "dom/tree_visit.h"

namespace qvox {

namespace {

LentText text_of_node(const Xstring& text) { return {units_of(text), text.length()}; }

// The attributes of a copy so far: a later one takes the place of an earlier one of its name, and
// stands at the end.
class CopiedAttributes {
public:
    explicit CopiedAttributes(ElementImpl& copy) : element(copy) {}

    void add(AttrImpl* attribute) {
        OwnedNode<Node> owned(attribute);
        Tree::destroy(takeEarlier(attribute));
        element.addNew(attribute);
        static_cast<void>(owned.release());
    }

private:
    // So many are searched faster than they are entered.
    static constexpr std::size_t FEW = 16;

    // Gives one of that name up.
    Node* takeEarlier(AttrImpl* attribute) {
        const PooledName* const name = attribute->getNames().name;
        AttrImpl* earlier = nullptr;
        if (count++ < FEW) {
            earlier = find(name);
        } else {
            if (byName.empty()) enterAll();
            earlier = std::exchange(byName[name], attribute);
        }
        if (earlier != nullptr) Tree::release(earlier);
        return earlier;
    }

    AttrImpl* find(const PooledName* name) const {
        Node* node = element.firstAttribute();
        while (node != nullptr && static_cast<AttrImpl*>(node)->getNames().name != name) {
            node = NodeLinks::next(node);
        }
        return static_cast<AttrImpl*>(node);
    }

    void enterAll() {
        for (Node* node = element.firstAttribute(); node != nullptr; node = NodeLinks::next(node)) {
            auto* const attribute = static_cast<AttrImpl*>(node);
            byName[attribute->getNames().name] = attribute;
        }
    }

    ElementImpl& element;
    std::size_t count = 0;
    std::unordered_map<const PooledName*, AttrImpl*> byName;  // once they are many
};

const Unit* units_of(const PooledName* name) { return units_of(text_of(name)); }

// The same name in the pool of a document.
const NodeName* name_in(DocumentImpl& document, const NodeName& name) {
    return document.getNames().nodeName(units_of(name.uri), units_of(name.name),
                                        units_of(name.attributeType), units_of(name.defaultValue));
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

Node* copy_element(const ElementImpl& source, Document* target) {
    OwnedNode<ElementImpl> copy(
        new ElementImpl(name_in(*static_cast<DocumentImpl*>(target), source.getNames()), target));
    CopiedAttributes copies(*copy);
    for (const Node* item = source.firstAttribute(); item != nullptr;
         item = NodeLinks::next(item)) {
        if (item->getNodeType() != Node::ATTRIBUTE_NODE) continue;
        copies.add(copy_attribute(static_cast<const AttrImpl&>(*item), target));
    }
    return copy.release();
}

// A single node. With a null target the copy belongs to the document of its source.
OwnedNode<Node> copy_node(Node* source, Document* target) {
    if (target == nullptr) target = source->getOwnerDocument();
    const bool isAttribute = source->getNodeType() == Node::ATTRIBUTE_NODE;
    return OwnedNode<Node>(isAttribute ? copy_attribute(static_cast<AttrImpl&>(*source), target)
                                       : cloneShallow(source, target));
}

}  // namespace

AttrImpl* copy_attribute(const AttrImpl& source, Document* target) {
    AttrImpl::Init init;
    init.namespaceURI = units_of(source.getNamespaceURI());
    init.qualifiedName = units_of(source.getName());
    init.value = units_of(source.getValue());
    init.specified = source.getSpecified();
    init.attributeType = units_of(source.getAttributeType());
    init.defaultValue = units_of(source.getDefaultValue());
    return new AttrImpl(init, target);
}

Node* cloneShallow(Node* source, Document* target) {
    switch (source->getNodeType()) {
        case Node::ELEMENT_NODE: return copy_element(static_cast<ElementImpl&>(*source), target);
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

namespace {

// Copies nodes into one memory; those that belong to other documents, and those of the rarer types,
// one by one.
class Copier {
public:
    // With a null target each copy belongs to the document of its source.
    Copier(NodeMemory& memory, Document* targetDocument)
        : make(memory), home(memory.getDocument()), target(targetDocument) {}

    OwnedNode<Node> copy(Node* source) {
        const Document* const document = target != nullptr ? target : source->getOwnerDocument();
        return document == home ? OwnedNode<Node>(copyHere(source)) : copy_node(source, target);
    }

private:
    Node* copyHere(Node* source) {
        switch (source->getNodeType()) {
            case Node::ELEMENT_NODE: return copyElement(static_cast<ElementImpl&>(*source));
            case Node::ATTRIBUTE_NODE: return copyAttribute(static_cast<AttrImpl&>(*source));
            case Node::TEXT_NODE: return make.text(text_of_node(source->getNodeValue()));
            case Node::CDATA_SECTION_NODE:
                return make.cdataSection(text_of_node(source->getNodeValue()));
            case Node::COMMENT_NODE: return make.comment(text_of_node(source->getNodeValue()));
            case Node::PROCESSING_INSTRUCTION_NODE:
                return make.instruction(text_of_node(source->getNodeName()),
                                        text_of_node(source->getNodeValue()));
            default: return cloneShallow(source, home);
        }
    }

    AttrImpl* copyAttribute(const AttrImpl& source) {
        return make.attribute(nameOf(source.getNames(), source), text_of_node(source.getValue()),
                              source.getSpecified());
    }

    Node* copyElement(const ElementImpl& source) {
        OwnedNode<ElementImpl> copy(make.element(nameOf(source.getNames(), source)));
        const Node* attribute = source.firstAttribute();
        if (attribute == nullptr) return copy.release();
        CopiedAttributes copies(*copy);
        for (; attribute != nullptr; attribute = NodeLinks::next(attribute)) {
            if (attribute->getNodeType() != Node::ATTRIBUTE_NODE) continue;
            copies.add(copyAttribute(static_cast<const AttrImpl&>(*attribute)));
        }
        return copy.release();
    }

    // The same name in the pool of the document that the copies belong to. An attribute can be from
    // another one than its element.
    const NodeName* nameOf(const NodeName& name, const Node& source) {
        if (Tree::ownDocumentOf(&source) == home) return &name;
        const NodeName*& known = names[&name];
        if (known == nullptr) known = name_in(*static_cast<DocumentImpl*>(home), name);
        return known;
    }

    NodeMaker make;
    Document* home;
    Document* target;
    std::unordered_map<const NodeName*, const NodeName*> names;  // of another document
};

}  // namespace

// What is below a document's copy lies in that one's memory, so that both can go together; not so
// the nodes that have to be looked for, which count as a change. A document that
// stands below, as one may under a document type, is nobody's: its copy, too, dies by itself where
// a later one fails.
Node* copy_tree(Node* source, bool deep, Document* target) {
    if (!deep) return copy_node(source, target).release();
    Document* const home =
        target != nullptr ? target : const_cast<Document*>(Tree::ownDocumentOf(source));
    OwnedNode<Node> copy;
    NodeMemory ownMemory(home);
    NodeMemory* memory = &ownMemory;
    if (source->getNodeType() == Node::DOCUMENT_NODE) {
        copy = copy_node(source, target);
        memory = &static_cast<DocumentImpl*>(copy.get())->makeMemory(home);
    }
    Copier copier(*memory, target);
    if (copy == nullptr) copy = copier.copy(source);
    std::vector<OwnedNode<Node>> documents;
    TreeVisit visit(source, NodeFilter::SHOW_ALL);
    Node* parent = copy.get();
    for (std::size_t parentDepth = 0; visit.next(); ++parentDepth) {
        for (; parentDepth >= visit.depth(); --parentDepth) parent = Tree::parentOf(parent);
        const bool isDocument = visit.node()->getNodeType() == Node::DOCUMENT_NODE;
        if (isDocument) documents.emplace_back();
        OwnedNode<Node> below = copier.copy(visit.node());
        if (NodeLinks::blockOf(below.get()).isSingle()) Tree::touch(copy.get());
        Tree::noteTravel(parent, below.get());
        parent = append_new(parent, std::move(below));
        if (isDocument) documents.back().reset(parent);
    }
    for (OwnedNode<Node>& document : documents) static_cast<void>(document.release());
    memory->finish();
    return copy.release();
}

}  // namespace qvox

#include "parser/tree_builder.h"

#include <memory>
#include <utility>
#include <vector>

#include "dom/attr.h"
#include "dom/character_data.h"
#include "dom/document.h"
#include "dom/document_type.h"
#include "dom/dom_implementation.h"
#include "dom/element.h"
#include "dom/named_nodes.h"
#include "dom/node_maker.h"
#include "dom/small_nodes.h"
#include "dom/tree.h"

namespace qvox {

namespace {

constexpr Unit XML_TARGET[] = {'x', 'm', 'l', 0};

void add_pseudo_attribute(Xstring& data, const char* name, const Unit* value) {
    if (value == nullptr) return;
    data += name;
    data += "=\"";
    data += value;
    data += "\"";
}

}  // namespace

TreeBuilder::~TreeBuilder() {
    for (Node* node : pendingNodes) Tree::destroy(node);
    attributes.destroyNodes();
    entities.destroyNodes();
    notations.destroyNodes();
    drop_aids();
    Tree::destroy(release());
}

Document* TreeBuilder::release() { return std::exchange(currentDocument, nullptr); }

void TreeBuilder::add(Node* node) {
    OwnedNode<Node> owned(node);
    pendingNodes.push_back(nullptr);
    pendingNodes.back() = owned.release();
}

void TreeBuilder::open(Node* node) {
    add(node);
    nodeStack.push_back({node, pendingNodes.size()});
}

// Now that the number of the children is known.
void TreeBuilder::close() {
    const OpenNode ended = nodeStack.back();
    nodeStack.pop_back();
    Tree::appendAll(ended.node, pendingNodes.data() + ended.firstChild,
                    pendingNodes.size() - ended.firstChild);
    pendingNodes.resize(ended.firstChild);
}

DocumentTypeImpl& TreeBuilder::open_document_type() const {
    return *static_cast<DocumentTypeImpl*>(top());
}

// What building alone needs memory for.
void TreeBuilder::drop_aids() {
    std::vector<Node*>().swap(pendingNodes);
    std::vector<OpenNode>().swap(nodeStack);
    maker.reset();
}

void TreeBuilder::add_declaration(DeclNode* declaration) {
    open_document_type().getDeclarations().append(declaration, NodeCollection::NO_PARENT);
}

AttrImpl* TreeBuilder::new_attribute(const AttributeRecord& record, ElementImpl* element) {
    AttrImpl::Init init;
    init.namespaceURI = units_of(record.uri);
    init.qualifiedName = record.qName->units();
    init.value = record.value;
    init.specified = record.specified;
    init.attributeType = record.decl != nullptr ? record.decl->type->units() : nullptr;
    init.defaultValue = record.decl != nullptr ? record.decl->normalized : nullptr;
    init.ownerElement = element;
    return maker->attribute(init);
}

// A later attribute of the same name takes the place of an earlier one, at the end.
void TreeBuilder::add_attributes(ElementImpl* element, const TagRecord& tag) {
    for (const AttributeRecord& record : tag.attributes) {
        attributes.put(record.qName->units(), new_attribute(record, element));
    }
    attributes.moveTo(element->ownAttributeMap());
}

void TreeBuilder::ev_start_document() {
    auto* document = new DocumentImpl(&defaultImplementation);
    currentDocument = document;
    nodeStack.push_back({document, 0});
    maker = std::make_unique<NodeMaker>(*document);
}

void TreeBuilder::ev_end_document() {
    close();
    drop_aids();
}

void TreeBuilder::ev_xml_decl(const Unit* version, const Unit* encoding, const Unit* standalone) {
    Xstring data;
    add_pseudo_attribute(data, "version", version);
    add_pseudo_attribute(data, " encoding", encoding);
    add_pseudo_attribute(data, " standalone", standalone);
    add(new ProcessingInstructionImpl(XML_TARGET, data.data(), currentDocument));
}

void TreeBuilder::ev_start_element(const TagRecord& tag) {
    OwnedNode<ElementImpl> element(
        maker->element(units_of(tag.uri), tag.qName->units(), tag.attributes.size()));
    if (!tag.attributes.empty()) add_attributes(element.get(), tag);
    open(element.release());
}

void TreeBuilder::ev_end_element(const TagRecord& /*tag*/) { close(); }

void TreeBuilder::ev_characters(const Unit* text, std::size_t /*length*/) {
    add(isInCdata ? new CDATASectionImpl(text, currentDocument) : maker->text(text));
}

void TreeBuilder::ev_pi(const Unit* target, const Unit* data) {
    add(new ProcessingInstructionImpl(target, data, currentDocument));
}

void TreeBuilder::ev_comment(const Unit* text) { add(new CommentImpl(text, currentDocument)); }

void TreeBuilder::ev_start_cdata() { isInCdata = true; }

void TreeBuilder::ev_end_cdata() { isInCdata = false; }

void TreeBuilder::ev_start_dtd(const Unit* name, const Unit* publicId, const Unit* systemId) {
    open(new DocumentTypeImpl(name, publicId, systemId, &defaultImplementation));
}

void TreeBuilder::ev_end_dtd() {
    if (!entities.isEmpty()) entities.moveTo(open_document_type().ownEntityMap());
    if (!notations.isEmpty()) notations.moveTo(open_document_type().ownNotationMap());
    close();
}

void TreeBuilder::ev_element_decl(const Unit* name, const Unit* model) {
    add_declaration(new ElementDecl(name, model));
}

void TreeBuilder::ev_attlist_decl(const Name& name, const ElementRecord& element) {
    OwnedNode<AttlistDecl> declaration(new AttlistDecl(name.units()));
    for (const AttDefRecord* definition : element.attDefs) {
        declaration->getAttDefs().append(
            new AttDef(definition->name->units(), definition->type->units(), definition->mode,
                       definition->value),
            NodeCollection::NO_PARENT);
    }
    add_declaration(declaration.release());
}

void TreeBuilder::ev_internal_entity_decl(const Unit* name, const Unit* value) {
    auto* entity = new EntityImpl(name, nullptr, nullptr, nullptr, currentDocument);
    entities.put(name, entity);
    add_declaration(new EntityDecl(name, value, nullptr, nullptr, nullptr));
}

void TreeBuilder::ev_external_entity_decl(const Unit* name, const Unit* publicId,
                                          const Unit* systemId, const Unit* notation) {
    auto* entity = new EntityImpl(name, publicId, systemId, notation, currentDocument);
    entities.put(name, entity);
    add_declaration(new EntityDecl(name, nullptr, publicId, systemId, notation));
}

void TreeBuilder::ev_notation_decl(const Unit* name, const Unit* publicId, const Unit* systemId) {
    auto* notation = new NotationImpl(name, publicId, systemId, currentDocument);
    notations.put(name, notation);
    add_declaration(new NotationDecl(name, publicId, systemId));
}

}  // namespace qvox

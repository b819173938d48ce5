#include "parser/tree_builder.h"

#include <memory>
#include <string>
#include <string_view>
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

LentText lent_text(const EventText& text) { return qvox::lent_text(text.units, text.length); }

constexpr Unit XML_TARGET[] = {'x', 'm', 'l', 0};
constexpr std::size_t USUAL_DECLARATION = 60;  // units
constexpr std::size_t USUAL_NAMES = 16;

using UnitString = std::basic_string<Unit, UnitTraits>;

void append_ascii(UnitString& to, std::string_view text) {
    for (const char c : text) to += static_cast<Unit>(c);
}

void add_pseudo_attribute(UnitString& data, const char* name, const Unit* value) {
    if (value == nullptr) return;
    append_ascii(data, name);
    append_ascii(data, "=\"");
    data += value;
    append_ascii(data, "\"");
}

template <typename NodeType>
OwnedNode<NodeType> owned(NodeType* node) {
    return OwnedNode<NodeType>(node);
}

// Puts a new node at the end of what a document type or declaration has.
void append_collected(NodeCollection& collection, Node* node) {
    collection.link(node, nullptr);
    NodeLinks::stand(node, &collection, Standing::COLLECTED);
}

// The memory has been counted as in use: destroying the attribute gives it back.
void remove_new(ElementImpl& element, AttrImpl* attribute) {
    element.attributeSlot().unlink(attribute);
    NodeLinks::standNowhere(attribute);
    Tree::destroy(attribute);
}

}  // namespace

TreeBuilder::~TreeBuilder() {
    entities.destroyNodes();
    notations.destroyNodes();
    drop_aids();
    Tree::destroy(currentDocument);
}

Document* TreeBuilder::release() { return std::exchange(currentDocument, nullptr); }

// At the end of the innermost open node.
template <typename NodeType>
NodeType* TreeBuilder::add(OwnedNode<NodeType> node) {
    return append_new(top, std::move(node));
}

template <typename NodeType>
void TreeBuilder::open(OwnedNode<NodeType> node) {
    top = add(std::move(node));
}

void TreeBuilder::close() { top = Tree::parentOf(top); }

DocumentTypeImpl& TreeBuilder::open_document_type() const {
    return *static_cast<DocumentTypeImpl*>(top);
}

// What building alone needs memory for.
void TreeBuilder::drop_aids() {
    maker.reset();
    names.clear();
    uses.clear();
}

void TreeBuilder::add_declaration(DeclNode* declaration) {
    append_collected(open_document_type().getDeclarations(), declaration);
}

NameInTree& TreeBuilder::inTree(const Name& name) {
    if (name.number >= names.size()) names.resize(2 * std::size_t{name.number} + USUAL_NAMES);
    return names[name.number];
}

const NodeName* TreeBuilder::pooledName(const NameUse& use) const {
    const auto [name, uri, declaration] = use;
    const bool isDeclared = declaration != nullptr;
    return currentDocument->getNames().nodeName(units_of(uri), units_of(name),
                                                isDeclared ? declaration->type->units() : nullptr,
                                                isDeclared ? declaration->normalized : nullptr);
}

// Most names are used in one way, and are never looked for in `uses`.
void TreeBuilder::changeUse(NameInTree::Use& last, const NameUse& use) {
    const auto [name, uri, declaration] = use;
    if (last.name == nullptr) {
        last = {uri, declaration, pooledName(use)};
        return;
    }
    const NodeName*& known = uses[use];
    if (known == nullptr) known = pooledName(use);
    last = {uri, declaration, known};
}

const NodeName* TreeBuilder::elementName(const TagRecord& tag) {
    NameInTree::Use& last = inTree(*tag.qName).ofElement;
    if (last.name == nullptr || last.uri != tag.uri) {
        changeUse(last, {tag.qName, tag.uri, nullptr});
    }
    return last.name;
}

const NodeName* TreeBuilder::attributeName(const AttributeRecord& record) {
    NameInTree::Use& last = inTree(*record.qName).ofAttribute;
    if (last.name == nullptr || last.uri != record.uri || last.declaration != record.decl) {
        changeUse(last, {record.qName, record.uri, record.decl});
    }
    return last.name;
}

// A later attribute of the same name takes the place of an earlier one, at the end.
void TreeBuilder::add_attributes(ElementImpl& element, const TagRecord& tag) {
    ++tagCount;
    for (const AttributeRecord& record : tag.attributes) {
        const NodeName* const name = attributeName(record);
        AttrImpl* const attribute =
            maker->attribute(name, lent_text(record.value, record.length), record.specified);
        NameInTree& known = inTree(*record.qName);
        if (known.tag == tagCount) remove_new(element, known.attribute);
        known.tag = tagCount;
        known.attribute = attribute;
        element.addNew(attribute);
    }
}

void TreeBuilder::ev_start_document() {
    currentDocument = new DocumentImpl(&defaultImplementation);
    top = currentDocument;
    memory = &currentDocument->makeMemory(currentDocument);
    maker = std::make_unique<NodeMaker>(*memory);
}

void TreeBuilder::ev_end_document() {
    top = nullptr;
    memory->finish();
    drop_aids();
}

void TreeBuilder::ev_xml_decl(const Unit* version, const Unit* encoding, const Unit* standalone) {
    UnitString data;
    data.reserve(USUAL_DECLARATION);
    add_pseudo_attribute(data, "version", version);
    add_pseudo_attribute(data, " encoding", encoding);
    add_pseudo_attribute(data, " standalone", standalone);
    const Unit* const text = data.empty() ? nullptr : data.c_str();
    add(owned(maker->instruction(lent_text(XML_TARGET), lent_text(text, data.size()))));
}

void TreeBuilder::ev_start_element(const TagRecord& tag) {
    ElementImpl* const element = add(owned(maker->element(elementName(tag))));
    top = element;
    if (!tag.attributes.empty()) add_attributes(*element, tag);
}

void TreeBuilder::ev_end_element(const TagRecord& /*tag*/) { close(); }

void TreeBuilder::ev_characters(const EventText& text) {
    const LentText data = lent_text(text);
    if (isInCdata) {
        add(owned(maker->cdataSection(data)));
    } else {
        add(owned(maker->text(data)));
    }
}

void TreeBuilder::ev_pi(const EventText& target, const EventText& data) {
    add(owned(maker->instruction(lent_text(target), lent_text(data))));
}

void TreeBuilder::ev_comment(const EventText& text) { add(owned(maker->comment(lent_text(text)))); }

void TreeBuilder::ev_start_cdata() { isInCdata = true; }

void TreeBuilder::ev_end_cdata() { isInCdata = false; }

void TreeBuilder::ev_start_dtd(const Unit* name, const Unit* publicId, const Unit* systemId) {
    open(owned(new DocumentTypeImpl(name, publicId, systemId, &defaultImplementation)));
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
        append_collected(declaration->getAttDefs(),
                         new AttDef(definition->name->units(), definition->type->units(),
                                    definition->mode, definition->value));
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

// The building of a tree from the events of a DOM parse.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <tuple>
#include <vector>

#include <qvox/dom.h>

#include "dom/declarations.h"
#include "dom/document.h"
#include "dom/document_type.h"
#include "dom/element.h"
#include "dom/named_nodes.h"
#include "dom/node_maker.h"
#include "dom/tree.h"
#include "scanner/events.h"

namespace qvox {

// A name of the document, as the tree has it.
struct NameInTree {
    // The name of nodes that it was used for last, and in what way.
    struct Use {
        const Name* uri = nullptr;
        const AttDefRecord* declaration = nullptr;
        const NodeName* name = nullptr;  // null as long as there was none
    };
    Use ofElement;
    Use ofAttribute;
    // The tag that last had an attribute of this name, and that attribute.
    std::size_t tag = 0;
    AttrImpl* attribute = nullptr;
};

class TreeBuilder final : public Events {
public:
    TreeBuilder() = default;
    TreeBuilder(const TreeBuilder&) = delete;
    TreeBuilder& operator=(const TreeBuilder&) = delete;
    // Frees a tree that wasn't released.
    ~TreeBuilder();

    // The finished document, which is the caller's then.
    Document* release();

    void ev_start_document() override;
    void ev_end_document() override;
    void ev_xml_decl(const Unit* version, const Unit* encoding, const Unit* standalone) override;
    void ev_start_element(const TagRecord& tag) override;
    void ev_end_element(const TagRecord& /*tag*/) override;
    // The tree has the xmlns attributes themselves.
    void ev_start_prefix_mappings(const TagRecord& /*tag*/) override {}
    void ev_end_prefix_mappings(const TagRecord& /*tag*/) override {}
    void ev_characters(const EventText& text) override;
    void ev_ignorable_whitespace(const Unit* /*text*/) override {}
    void ev_pi(const EventText& target, const EventText& data) override;
    void ev_comment(const EventText& text) override;
    void ev_start_cdata() override;
    void ev_end_cdata() override;
    // Entities leave no mark in the tree.
    void ev_start_entity(const Unit* /*name*/) override {}
    void ev_end_entity(const Unit* /*name*/) override {}

    void ev_start_dtd(const Unit* name, const Unit* publicId, const Unit* systemId) override;
    void ev_end_dtd() override;
    void ev_element_decl(const Unit* name, const Unit* model) override;
    void ev_attlist_decl(const Name& name, const ElementRecord& element) override;
    void ev_internal_entity_decl(const Unit* name, const Unit* value) override;
    void ev_external_entity_decl(const Unit* name, const Unit* publicId, const Unit* systemId,
                                 const Unit* notation) override;
    void ev_notation_decl(const Unit* name, const Unit* publicId, const Unit* systemId) override;

private:
    // A name with what it stands for where it is used: a namespace, and the declaration of an
    // attribute. Each may be null.
    using NameUse = std::tuple<const Name*, const Name*, const AttDefRecord*>;

    DocumentTypeImpl& open_document_type() const;
    template <typename NodeType>
    NodeType* add(OwnedNode<NodeType> node);
    template <typename NodeType>
    void open(OwnedNode<NodeType> node);
    void close();
    NameInTree& inTree(const Name& name);
    const NodeName* elementName(const TagRecord& tag);
    const NodeName* attributeName(const AttributeRecord& record);
    const NodeName* pooledName(const NameUse& use) const;
    void changeUse(NameInTree::Use& last, const NameUse& use);
    void add_declaration(DeclNode* declaration);
    void add_attributes(ElementImpl& element, const TagRecord& tag);
    void drop_aids();

    DocumentImpl* currentDocument = nullptr;  // the tree under construction
    Node* top = nullptr;                      // the innermost node whose end hasn't been read
    NodeMemory* memory = nullptr;             // of the document under construction
    std::unique_ptr<NodeMaker> maker;         // for that
    std::vector<NameInTree> names;            // what is known of each, by the names' numbers
    std::map<NameUse, const NodeName*> uses;  // of names in more than one way
    std::size_t tagCount = 0;
    NamedNodes entities;  // those of the document type, which gets them at its end
    NamedNodes notations;
    bool isInCdata = false;
};

}  // namespace qvox

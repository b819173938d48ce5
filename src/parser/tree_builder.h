// The building of a tree from the events of a DOM parse.
#pragma once

#include <memory>
#include <vector>

#include <qvox/dom.h>

#include "dom/attr.h"
#include "dom/declarations.h"
#include "dom/document_type.h"
#include "dom/element.h"
#include "dom/named_nodes.h"
#include "dom/node_maker.h"
#include "scanner/events.h"

namespace qvox {

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
    void ev_characters(const Unit* text, std::size_t length) override;
    void ev_ignorable_whitespace(const Unit* /*text*/) override {}
    void ev_pi(const Unit* target, const Unit* data) override;
    void ev_comment(const Unit* text) override;
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
    // A node whose end hasn't been read.
    struct OpenNode {
        Node* node;
        std::size_t firstChild;  // where its children begin in pendingNodes
    };

    Node* top() const { return nodeStack.back().node; }
    DocumentTypeImpl& open_document_type() const;
    void add(Node* node);
    void open(Node* node);
    void close();
    void add_declaration(DeclNode* declaration);
    void add_attributes(ElementImpl* element, const TagRecord& tag);
    AttrImpl* new_attribute(const AttributeRecord& record, ElementImpl* element);
    void drop_aids();

    Document* currentDocument = nullptr;  // the tree under construction
    std::vector<OpenNode> nodeStack;      // the open nodes, the innermost at the end
    std::vector<Node*> pendingNodes;      // their children, which they get when they end
    std::unique_ptr<NodeMaker> maker;     // for the document under construction
    NamedNodes attributes;                // those of the element that begins
    NamedNodes entities;                  // those of the document type, which gets them at its end
    NamedNodes notations;
    bool isInCdata = false;
};

}  // namespace qvox

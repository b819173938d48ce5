// The events of a document, called by the grammar and, for entities, by the input. What becomes of
// them, calls of handlers or nodes of a tree, is decided where a parse is made. Texts are
// NUL-terminated; an absent one is null. How long one lasts is the lexer's to say, at tokenValue.
#pragma once

#include "scanner/dtd_actions.h"
#include "scanner/event_text.h"
#include "scanner/tag.h"
#include "text/wide.h"

namespace qvox {

class Events {
public:
    virtual void ev_start_document() = 0;
    virtual void ev_end_document() = 0;
    virtual void ev_xml_decl(const Unit* version, const Unit* encoding, const Unit* standalone) = 0;
    virtual void ev_start_element(const TagRecord& tag) = 0;
    virtual void ev_end_element(const TagRecord& tag) = 0;
    virtual void ev_start_prefix_mappings(const TagRecord& tag) = 0;
    virtual void ev_end_prefix_mappings(const TagRecord& tag) = 0;
    virtual void ev_characters(const EventText& text) = 0;
    virtual void ev_ignorable_whitespace(const Unit* text) = 0;
    virtual void ev_pi(const EventText& target, const EventText& data) = 0;
    virtual void ev_comment(const EventText& text) = 0;
    virtual void ev_start_cdata() = 0;
    virtual void ev_end_cdata() = 0;
    virtual void ev_start_entity(const Unit* name) = 0;
    virtual void ev_end_entity(const Unit* name) = 0;

    virtual void ev_start_dtd(const Unit* name, const Unit* publicId, const Unit* systemId) = 0;
    virtual void ev_end_dtd() = 0;
    virtual void ev_element_decl(const Unit* name, const Unit* model) = 0;
    virtual void ev_attlist_decl(const Name& name, const ElementRecord& element) = 0;
    virtual void ev_internal_entity_decl(const Unit* name, const Unit* value) = 0;
    virtual void ev_external_entity_decl(const Unit* name, const Unit* publicId,
                                         const Unit* systemId, const Unit* notation) = 0;
    virtual void ev_notation_decl(const Unit* name, const Unit* publicId, const Unit* systemId) = 0;

protected:
    ~Events() = default;
};

}  // namespace qvox

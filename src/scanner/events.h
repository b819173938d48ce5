// The events of a document, one function each, called by the grammar. What becomes of them, calls
// of handlers or nodes of a tree, is decided in the parsers' folder, where they are defined. Texts
// are NUL-terminated strings on the parse heap; an absent one is null. The events of entities are
// with the input stack, which raises them.
#pragma once

#include "scanner/document_actions.h"
#include "text/wide.h"

namespace qvox {

void ev_start_document();
void ev_end_document();
void ev_xml_decl(const Unit* version, const Unit* encoding, const Unit* standalone);
void ev_start_element(const TagRecord& tag);
void ev_end_element(const TagRecord& tag);
void ev_start_prefix_mappings(const TagRecord& tag);
void ev_end_prefix_mappings(const TagRecord& tag);
void ev_characters(const Unit* text);
void ev_ignorable_whitespace(const Unit* text);
void ev_pi(const Unit* target, const Unit* data);
void ev_comment(const Unit* text);
void ev_start_cdata();
void ev_end_cdata();

void ev_start_dtd(const Unit* name, const Unit* publicId, const Unit* systemId);
void ev_end_dtd();
void ev_element_decl(const Unit* name, const Unit* model);
void ev_attlist_decl(const Unit* name, const ElementRecord& element);
void ev_internal_entity_decl(const Unit* name, const Unit* value);
void ev_external_entity_decl(const Unit* name, const Unit* publicId, const Unit* systemId,
                             const Unit* notation);
void ev_notation_decl(const Unit* name, const Unit* publicId, const Unit* systemId);

}  // namespace qvox

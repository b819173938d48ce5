// The delivery of events to the handlers of a SAX parse. The handler is fetched anew at each event,
// always through the reader's virtual operations; without one the event is dropped and nothing is
// built for it.
#pragma once

#include <qvox/parser.h>

#include "scanner/document_actions.h"
#include "text/wide.h"

namespace qvox::sax {

void start_document(SAXParser& reader);
void end_document(SAXParser& reader);
void start_element(SAXParser& reader, const TagRecord& tag);
void end_element(SAXParser& reader, const TagRecord& tag);
void start_prefix_mappings(SAXParser& reader, const TagRecord& tag);
void end_prefix_mappings(SAXParser& reader, const TagRecord& tag);
void characters(SAXParser& reader, const Unit* text);
void ignorable_whitespace(SAXParser& reader, const Unit* text);
void pi(SAXParser& reader, const Unit* target, const Unit* data);
void comment(SAXParser& reader, const Unit* text);
void start_cdata(SAXParser& reader);
void end_cdata(SAXParser& reader);
void start_entity(SAXParser& reader, const Unit* name);
void end_entity(SAXParser& reader, const Unit* name);

void start_dtd(SAXParser& reader, const Unit* name, const Unit* publicId, const Unit* systemId);
void end_dtd(SAXParser& reader);
void element_decl(SAXParser& reader, const Unit* name, const Unit* model);
void attlist_decl(SAXParser& reader, const Unit* name, const ElementRecord& element);
void internal_entity_decl(SAXParser& reader, const Unit* name, const Unit* value);
void external_entity_decl(SAXParser& reader, const Unit* name, const Unit* publicId,
                          const Unit* systemId);
void notation_decl(SAXParser& reader, const Unit* name, const Unit* publicId, const Unit* systemId);

}  // namespace qvox::sax

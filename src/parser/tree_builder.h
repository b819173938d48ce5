// The building of a tree from the events of a DOM parse.
#pragma once

#include <qvox/dom.h>

#include "scanner/document_actions.h"
#include "text/wide.h"

namespace qvox {

// The tree under construction; null outside a DOM parse. Written by the builder only.
extern Document* currentDocument;

namespace tree {

// The finished document, which is the caller's then.
Document* release();
// Forgets the open nodes and frees a document that wasn't released.
void discard();

void start_document();
void end_document();
void xml_decl(const Unit* version, const Unit* encoding, const Unit* standalone);
void start_element(const TagRecord& tag);
void end_element();
void characters(const Unit* text);
void pi(const Unit* target, const Unit* data);
void comment(const Unit* text);
void start_cdata();
void end_cdata();

void start_dtd(const Unit* name, const Unit* publicId, const Unit* systemId);
void end_dtd();
void element_decl(const Unit* name, const Unit* model);
void attlist_decl(const Unit* name, const ElementRecord& element);
void internal_entity_decl(const Unit* name, const Unit* value);
void external_entity_decl(const Unit* name, const Unit* publicId, const Unit* systemId,
                          const Unit* notation);
void notation_decl(const Unit* name, const Unit* publicId, const Unit* systemId);

}  // namespace tree
}  // namespace qvox

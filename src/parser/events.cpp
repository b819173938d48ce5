// The events of a parse: here it is decided who receives them, the handlers of a SAX parse or the
// tree under construction.
#include "scanner/events.h"

#include "input/level_events.h"
#include "parser/parse_run.h"
#include "parser/sax_delivery.h"
#include "parser/tree_builder.h"

namespace qvox {

namespace {

bool building_tree() { return currentParser->getType() == Parser::DOM_PARSER; }

SAXParser& reader() { return static_cast<SAXParser&>(*currentParser); }

}  // namespace

void ev_start_document() {
    building_tree() ? tree::start_document() : sax::start_document(reader());
}

void ev_end_document() { building_tree() ? tree::end_document() : sax::end_document(reader()); }

// Handlers are not told of an XML declaration.
void ev_xml_decl(const Unit* version, const Unit* encoding, const Unit* standalone) {
    if (building_tree()) tree::xml_decl(version, encoding, standalone);
}

void ev_start_element(const TagRecord& tag) {
    building_tree() ? tree::start_element(tag) : sax::start_element(reader(), tag);
}

void ev_end_element(const TagRecord& tag) {
    building_tree() ? tree::end_element() : sax::end_element(reader(), tag);
}

// The tree has the xmlns attributes themselves.
void ev_start_prefix_mappings(const TagRecord& tag) {
    if (!building_tree()) sax::start_prefix_mappings(reader(), tag);
}

void ev_end_prefix_mappings(const TagRecord& tag) {
    if (!building_tree()) sax::end_prefix_mappings(reader(), tag);
}

void ev_characters(const Unit* text) {
    building_tree() ? tree::characters(text) : sax::characters(reader(), text);
}

void ev_ignorable_whitespace(const Unit* text) {
    if (!building_tree()) sax::ignorable_whitespace(reader(), text);
}

void ev_pi(const Unit* target, const Unit* data) {
    building_tree() ? tree::pi(target, data) : sax::pi(reader(), target, data);
}

void ev_comment(const Unit* text) {
    building_tree() ? tree::comment(text) : sax::comment(reader(), text);
}

void ev_start_cdata() { building_tree() ? tree::start_cdata() : sax::start_cdata(reader()); }

void ev_end_cdata() { building_tree() ? tree::end_cdata() : sax::end_cdata(reader()); }

// Entities leave no mark in the tree.
void ev_start_entity(const Unit* name) {
    if (!building_tree()) sax::start_entity(reader(), name);
}

void ev_end_entity(const Unit* name) {
    if (!building_tree()) sax::end_entity(reader(), name);
}

void ev_start_dtd(const Unit* name, const Unit* publicId, const Unit* systemId) {
    building_tree() ? tree::start_dtd(name, publicId, systemId)
                    : sax::start_dtd(reader(), name, publicId, systemId);
}

void ev_end_dtd() { building_tree() ? tree::end_dtd() : sax::end_dtd(reader()); }

void ev_element_decl(const Unit* name, const Unit* model) {
    building_tree() ? tree::element_decl(name, model) : sax::element_decl(reader(), name, model);
}

void ev_attlist_decl(const Unit* name, const ElementRecord& element) {
    building_tree() ? tree::attlist_decl(name, element)
                    : sax::attlist_decl(reader(), name, element);
}

void ev_internal_entity_decl(const Unit* name, const Unit* value) {
    building_tree() ? tree::internal_entity_decl(name, value)
                    : sax::internal_entity_decl(reader(), name, value);
}

void ev_external_entity_decl(const Unit* name, const Unit* publicId, const Unit* systemId,
                             const Unit* notation) {
    building_tree() ? tree::external_entity_decl(name, publicId, systemId, notation)
                    : sax::external_entity_decl(reader(), name, publicId, systemId);
}

void ev_notation_decl(const Unit* name, const Unit* publicId, const Unit* systemId) {
    building_tree() ? tree::notation_decl(name, publicId, systemId)
                    : sax::notation_decl(reader(), name, publicId, systemId);
}

}  // namespace qvox

// The events of a parse: here it is decided who receives them.
#include "scanner/events.h"

#include "input/level_events.h"
#include "parser/parse_run.h"
#include "parser/sax_delivery.h"

namespace qvox {

namespace {

SAXParser& reader() {
    return static_cast<SAXParser&>(*currentParser);
}

}  // namespace

void ev_start_document() {
    sax::start_document(reader());
}

void ev_end_document() {
    sax::end_document(reader());
}

// An XML declaration isn't reported to handlers.
void ev_xml_decl(const Unit* /*version*/, const Unit* /*encoding*/, const Unit* /*standalone*/) {}

void ev_start_element(const TagRecord& tag) {
    sax::start_element(reader(), tag);
}

void ev_end_element(const TagRecord& tag) {
    sax::end_element(reader(), tag);
}

void ev_start_prefix_mappings(const TagRecord& tag) {
    sax::start_prefix_mappings(reader(), tag);
}

void ev_end_prefix_mappings(const TagRecord& tag) {
    sax::end_prefix_mappings(reader(), tag);
}

void ev_characters(const Unit* text) {
    sax::characters(reader(), text);
}

void ev_ignorable_whitespace(const Unit* text) {
    sax::ignorable_whitespace(reader(), text);
}

void ev_pi(const Unit* target, const Unit* data) {
    sax::pi(reader(), target, data);
}

void ev_comment(const Unit* text) {
    sax::comment(reader(), text);
}

void ev_start_cdata() {
    sax::start_cdata(reader());
}

void ev_end_cdata() {
    sax::end_cdata(reader());
}

void ev_start_entity(const Unit* name) {
    sax::start_entity(reader(), name);
}

void ev_end_entity(const Unit* name) {
    sax::end_entity(reader(), name);
}

void ev_start_dtd(const Unit* name, const Unit* publicId, const Unit* systemId) {
    sax::start_dtd(reader(), name, publicId, systemId);
}

void ev_end_dtd() {
    sax::end_dtd(reader());
}

void ev_element_decl(const Unit* name, const Unit* model) {
    sax::element_decl(reader(), name, model);
}

void ev_attlist_decl(const Unit* name, const ElementRecord& element) {
    sax::attlist_decl(reader(), name, element);
}

void ev_internal_entity_decl(const Unit* name, const Unit* value) {
    sax::internal_entity_decl(reader(), name, value);
}

void ev_external_entity_decl(const Unit* name, const Unit* publicId, const Unit* systemId,
                             const Unit* /*notation*/) {
    sax::external_entity_decl(reader(), name, publicId, systemId);
}

void ev_notation_decl(const Unit* name, const Unit* publicId, const Unit* systemId) {
    sax::notation_decl(reader(), name, publicId, systemId);
}

}  // namespace qvox

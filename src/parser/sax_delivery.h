// The delivery of events to the handlers of a SAX parse. The handler is fetched anew at each event,
// always through the reader's virtual operations; without one the event is dropped and nothing is
// built for it.
#pragma once

#include <qvox/parser.h>

#include "parser/sax_types.h"
#include "scanner/events.h"

namespace qvox {

class SaxDelivery final : public Events {
public:
    explicit SaxDelivery(SAXParser& saxReader) : reader(saxReader) {}

    void ev_start_document() override;
    void ev_end_document() override;
    // Handlers are not told of an XML declaration.
    void ev_xml_decl(const Unit* /*version*/, const Unit* /*encoding*/,
                     const Unit* /*standalone*/) override {}
    void ev_start_element(const TagRecord& tag) override;
    void ev_end_element(const TagRecord& tag) override;
    void ev_start_prefix_mappings(const TagRecord& tag) override;
    void ev_end_prefix_mappings(const TagRecord& tag) override;
    void ev_characters(const EventText& text) override;
    void ev_ignorable_whitespace(const Unit* text) override;
    void ev_pi(const EventText& target, const EventText& data) override;
    void ev_comment(const EventText& text) override;
    void ev_start_cdata() override;
    void ev_end_cdata() override;
    void ev_start_entity(const Unit* name) override;
    void ev_end_entity(const Unit* name) override;

    void ev_start_dtd(const Unit* name, const Unit* publicId, const Unit* systemId) override;
    void ev_end_dtd() override;
    void ev_element_decl(const Unit* name, const Unit* model) override;
    void ev_attlist_decl(const Name& name, const ElementRecord& element) override;
    void ev_internal_entity_decl(const Unit* name, const Unit* value) override;
    void ev_external_entity_decl(const Unit* name, const Unit* publicId, const Unit* systemId,
                                 const Unit* notation) override;
    void ev_notation_decl(const Unit* name, const Unit* publicId, const Unit* systemId) override;

private:
    LexicalHandler* lexical_handler() const;
    DeclHandler* decl_handler() const;
    ContentHandler* mapping_handler(const TagRecord& tag) const;

    SAXParser& reader;
    AttributesImpl attributes;  // of the tag in hand, used again for each
};

}  // namespace qvox

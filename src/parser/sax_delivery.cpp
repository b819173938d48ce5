#include "parser/sax_delivery.h"

#include <stdexcept>

#include "parser/sax_types.h"

namespace qvox {

namespace {

// A longer text is lent to the handler instead of copied.
constexpr std::size_t LONGEST_COPIED_TEXT = 8192;

// What the length of a string can tell.
constexpr std::size_t LONGEST_LENT_TEXT = 2147483645;

AttributesImpl attributes_of(const TagRecord& tag) {
    AttributesImpl attributes;
    attributes.reserve(tag.attributes.size());
    for (const AttributeRecord& record : tag.attributes) {
        attributes.add(record.uri, record.localName, record.qName,
                       record.decl != nullptr ? record.decl->type : nullptr, record.value);
    }
    return attributes;
}

}  // namespace

LexicalHandler* SaxDelivery::lexical_handler() const {
    return static_cast<LexicalHandler*>(reader.getProperty(PROPERTY_LEXICAL_HANDLER));
}

DeclHandler* SaxDelivery::decl_handler() const {
    return static_cast<DeclHandler*>(reader.getProperty(PROPERTY_DECL_HANDLER));
}

void SaxDelivery::ev_start_document() {
    if (ContentHandler* handler = reader.getContentHandler()) handler->startDocument();
}

void SaxDelivery::ev_end_document() {
    if (ContentHandler* handler = reader.getContentHandler()) handler->endDocument();
}

void SaxDelivery::ev_start_element(const TagRecord& tag) {
    ContentHandler* handler = reader.getContentHandler();
    if (handler == nullptr) return;
    handler->startElement(tag.uri, tag.localName, tag.qName, attributes_of(tag));
}

void SaxDelivery::ev_end_element(const TagRecord& tag) {
    ContentHandler* handler = reader.getContentHandler();
    if (handler != nullptr) handler->endElement(tag.uri, tag.localName, tag.qName);
}

void SaxDelivery::ev_start_prefix_mappings(const TagRecord& tag) {
    if (tag.prefixMappings.empty() || !reader.getFeature(FEATURE_NAMESPACES)) return;
    ContentHandler* handler = reader.getContentHandler();
    if (handler == nullptr) return;
    for (const PrefixMapping& mapping : tag.prefixMappings) {
        handler->startPrefixMapping(mapping.prefix, mapping.uri);
    }
}

void SaxDelivery::ev_end_prefix_mappings(const TagRecord& tag) {
    if (tag.prefixMappings.empty() || !reader.getFeature(FEATURE_NAMESPACES)) return;
    ContentHandler* handler = reader.getContentHandler();
    if (handler == nullptr) return;
    for (const PrefixMapping& mapping : tag.prefixMappings) {
        handler->endPrefixMapping(mapping.prefix);
    }
}

void SaxDelivery::ev_characters(const Unit* text) {
    ContentHandler* handler = reader.getContentHandler();
    if (handler == nullptr) return;
    const std::size_t length = wide_length(text);
    if (length > LONGEST_LENT_TEXT) throw std::length_error("text too long");
    if (length > LONGEST_COPIED_TEXT) {
        handler->characters(Xstring(text, static_cast<int>(length)));
    } else {
        handler->characters(text);
    }
}

void SaxDelivery::ev_ignorable_whitespace(const Unit* text) {
    if (ContentHandler* handler = reader.getContentHandler()) handler->ignorableWhiteSpace(text);
}

void SaxDelivery::ev_pi(const Unit* target, const Unit* data) {
    ContentHandler* handler = reader.getContentHandler();
    if (handler != nullptr) handler->processingInstruction(target, data);
}

void SaxDelivery::ev_comment(const Unit* text) {
    if (LexicalHandler* handler = lexical_handler()) handler->comment(text);
}

void SaxDelivery::ev_start_cdata() {
    if (LexicalHandler* handler = lexical_handler()) handler->startCDATA();
}

void SaxDelivery::ev_end_cdata() {
    if (LexicalHandler* handler = lexical_handler()) handler->endCDATA();
}

void SaxDelivery::ev_start_entity(const Unit* name) {
    if (LexicalHandler* handler = lexical_handler()) handler->startEntity(name);
}

void SaxDelivery::ev_end_entity(const Unit* name) {
    if (LexicalHandler* handler = lexical_handler()) handler->endEntity(name);
}

void SaxDelivery::ev_start_dtd(const Unit* name, const Unit* publicId, const Unit* systemId) {
    if (LexicalHandler* handler = lexical_handler()) {
        handler->startDTD(name, publicId, systemId);
    }
}

void SaxDelivery::ev_end_dtd() {
    if (LexicalHandler* handler = lexical_handler()) handler->endDTD();
}

void SaxDelivery::ev_element_decl(const Unit* name, const Unit* model) {
    if (DeclHandler* handler = decl_handler()) handler->elementDecl(name, model);
}

void SaxDelivery::ev_attlist_decl(const Unit* name, const ElementRecord& element) {
    DeclHandler* handler = decl_handler();
    if (handler == nullptr) return;
    for (const AttDefRecord* definition : element.attDefs) {
        handler->attributeDecl(name, definition->name, definition->type, definition->mode,
                               definition->value);
    }
}

void SaxDelivery::ev_internal_entity_decl(const Unit* name, const Unit* value) {
    if (DeclHandler* handler = decl_handler()) handler->internalEntityDecl(name, value);
}

void SaxDelivery::ev_external_entity_decl(const Unit* name, const Unit* publicId,
                                          const Unit* systemId, const Unit* /*notation*/) {
    if (DeclHandler* handler = decl_handler()) {
        handler->externalEntityDecl(name, publicId, systemId);
    }
}

void SaxDelivery::ev_notation_decl(const Unit* name, const Unit* publicId, const Unit* systemId) {
    if (DTDHandler* handler = reader.getDTDHandler()) {
        handler->notationDecl(name, publicId, systemId);
    }
}

}  // namespace qvox

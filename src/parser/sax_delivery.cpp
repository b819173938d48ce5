#include "parser/sax_delivery.h"

#include <stdexcept>

#include "parser/sax_types.h"

namespace qvox::sax {

namespace {

// A longer text is lent to the handler instead of copied.
constexpr std::size_t LONGEST_COPIED_TEXT = 8192;

// What the length of a string can tell.
constexpr std::size_t LONGEST_LENT_TEXT = 2147483645;

LexicalHandler* lexical_handler(const SAXParser& reader) {
    return static_cast<LexicalHandler*>(reader.getProperty(PROPERTY_LEXICAL_HANDLER));
}

DeclHandler* decl_handler(const SAXParser& reader) {
    return static_cast<DeclHandler*>(reader.getProperty(PROPERTY_DECL_HANDLER));
}

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

void start_document(SAXParser& reader) {
    if (ContentHandler* handler = reader.getContentHandler()) handler->startDocument();
}

void end_document(SAXParser& reader) {
    if (ContentHandler* handler = reader.getContentHandler()) handler->endDocument();
}

void start_element(SAXParser& reader, const TagRecord& tag) {
    ContentHandler* handler = reader.getContentHandler();
    if (handler == nullptr) return;
    handler->startElement(tag.uri, tag.localName, tag.qName, attributes_of(tag));
}

void end_element(SAXParser& reader, const TagRecord& tag) {
    ContentHandler* handler = reader.getContentHandler();
    if (handler != nullptr) handler->endElement(tag.uri, tag.localName, tag.qName);
}

void start_prefix_mappings(SAXParser& reader, const TagRecord& tag) {
    if (tag.prefixMappings.empty() || !reader.getFeature(FEATURE_NAMESPACES)) return;
    for (const PrefixMapping& mapping : tag.prefixMappings) {
        ContentHandler* handler = reader.getContentHandler();
        if (handler != nullptr) handler->startPrefixMapping(mapping.prefix, mapping.uri);
    }
}

void end_prefix_mappings(SAXParser& reader, const TagRecord& tag) {
    if (tag.prefixMappings.empty() || !reader.getFeature(FEATURE_NAMESPACES)) return;
    for (const PrefixMapping& mapping : tag.prefixMappings) {
        ContentHandler* handler = reader.getContentHandler();
        if (handler != nullptr) handler->endPrefixMapping(mapping.prefix);
    }
}

void characters(SAXParser& reader, const Unit* text) {
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

void ignorable_whitespace(SAXParser& reader, const Unit* text) {
    if (ContentHandler* handler = reader.getContentHandler()) handler->ignorableWhiteSpace(text);
}

void pi(SAXParser& reader, const Unit* target, const Unit* data) {
    ContentHandler* handler = reader.getContentHandler();
    if (handler != nullptr) handler->processingInstruction(target, data);
}

void comment(SAXParser& reader, const Unit* text) {
    if (LexicalHandler* handler = lexical_handler(reader)) handler->comment(text);
}

void start_cdata(SAXParser& reader) {
    if (LexicalHandler* handler = lexical_handler(reader)) handler->startCDATA();
}

void end_cdata(SAXParser& reader) {
    if (LexicalHandler* handler = lexical_handler(reader)) handler->endCDATA();
}

void start_entity(SAXParser& reader, const Unit* name) {
    if (LexicalHandler* handler = lexical_handler(reader)) handler->startEntity(name);
}

void end_entity(SAXParser& reader, const Unit* name) {
    if (LexicalHandler* handler = lexical_handler(reader)) handler->endEntity(name);
}

void start_dtd(SAXParser& reader, const Unit* name, const Unit* publicId, const Unit* systemId) {
    if (LexicalHandler* handler = lexical_handler(reader)) {
        handler->startDTD(name, publicId, systemId);
    }
}

void end_dtd(SAXParser& reader) {
    if (LexicalHandler* handler = lexical_handler(reader)) handler->endDTD();
}

void element_decl(SAXParser& reader, const Unit* name, const Unit* model) {
    if (DeclHandler* handler = decl_handler(reader)) handler->elementDecl(name, model);
}

void attlist_decl(SAXParser& reader, const Unit* name, const ElementRecord& element) {
    DeclHandler* handler = decl_handler(reader);
    if (handler == nullptr) return;
    for (const AttDefRecord* definition : element.attDefs) {
        handler->attributeDecl(name, definition->name, definition->type, definition->mode,
                               definition->value);
    }
}

void internal_entity_decl(SAXParser& reader, const Unit* name, const Unit* value) {
    if (DeclHandler* handler = decl_handler(reader)) handler->internalEntityDecl(name, value);
}

void external_entity_decl(SAXParser& reader, const Unit* name, const Unit* publicId,
                          const Unit* systemId) {
    if (DeclHandler* handler = decl_handler(reader)) {
        handler->externalEntityDecl(name, publicId, systemId);
    }
}

void notation_decl(SAXParser& reader, const Unit* name, const Unit* publicId,
                   const Unit* systemId) {
    if (DTDHandler* handler = reader.getDTDHandler()) {
        handler->notationDecl(name, publicId, systemId);
    }
}

}  // namespace qvox::sax

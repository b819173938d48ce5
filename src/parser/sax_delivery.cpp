#include "parser/sax_delivery.h"

#include "text/lanes.h"
#include "text/lent_text.h"

namespace qvox {

namespace {

// A longer text is a bulk string, whatever its line ends are.
constexpr std::size_t LONGEST_ORDINARY_TEXT = 8192;

bool has_return(const EventText& text) {
    const Unit* const end = text.units + text.length;
    return lanes::find_any_within<'\r'>(text.units, end) != end;
}

// A text as an event has it: lent for as long as the event lasts, or a copy where line ends are to
// be normalised.
Xstring string_of(const EventText& text) {
    const LentText lent = lent_text(text.units, text.length);
    return text.mayHaveReturns && has_return(text) ? Xstring(text.units) : lent.string();
}

Xstring string_of(const Unit* text) { return string_of(EventText(text)); }

const Xstring& string_of(const Name* name) { return name != nullptr ? name->text : Xstring::Null; }

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
    attributes.renew(tag.attributes.size());
    for (const AttributeRecord& record : tag.attributes) {
        attributes.add(record.uri, record.localName, *record.qName,
                       record.decl != nullptr ? record.decl->type : nullptr,
                       lent_text(record.value, record.length));
    }
    handler->startElement(string_of(tag.uri), string_of(tag.localName), tag.qName->text,
                          attributes);
}

void SaxDelivery::ev_end_element(const TagRecord& tag) {
    ContentHandler* handler = reader.getContentHandler();
    if (handler == nullptr) return;
    handler->endElement(string_of(tag.uri), string_of(tag.localName), tag.qName->text);
}

void SaxDelivery::ev_start_prefix_mappings(const TagRecord& tag) {
    ContentHandler* handler = mapping_handler(tag);
    if (handler == nullptr) return;
    for (const PrefixMapping& mapping : tag.prefixMappings) {
        handler->startPrefixMapping(string_of(mapping.prefix), mapping.uri->text);
    }
}

void SaxDelivery::ev_end_prefix_mappings(const TagRecord& tag) {
    ContentHandler* handler = mapping_handler(tag);
    if (handler == nullptr) return;
    for (const PrefixMapping& mapping : tag.prefixMappings) {
        handler->endPrefixMapping(string_of(mapping.prefix));
    }
}

// Who is told of the tag's mappings: nobody where there are none.
ContentHandler* SaxDelivery::mapping_handler(const TagRecord& tag) const {
    if (tag.prefixMappings.empty() || !reader.getFeature(FEATURE_NAMESPACES)) return nullptr;
    return reader.getContentHandler();
}

void SaxDelivery::ev_characters(const EventText& text) {
    ContentHandler* handler = reader.getContentHandler();
    if (handler == nullptr) return;
    const LentText lent = lent_text(text.units, text.length);
    if (text.length > LONGEST_ORDINARY_TEXT) {
        handler->characters(Xstring(lent.units, lent.length));
    } else if (text.mayHaveReturns) {
        handler->characters(string_of(text));
    } else {
        handler->characters(lent.string());
    }
}

void SaxDelivery::ev_ignorable_whitespace(const Unit* text) {
    if (ContentHandler* handler = reader.getContentHandler())
        handler->ignorableWhiteSpace(string_of(text));
}

void SaxDelivery::ev_pi(const EventText& target, const EventText& data) {
    ContentHandler* handler = reader.getContentHandler();
    if (handler != nullptr) handler->processingInstruction(string_of(target), string_of(data));
}

void SaxDelivery::ev_comment(const EventText& text) {
    if (LexicalHandler* handler = lexical_handler()) handler->comment(string_of(text));
}

void SaxDelivery::ev_start_cdata() {
    if (LexicalHandler* handler = lexical_handler()) handler->startCDATA();
}

void SaxDelivery::ev_end_cdata() {
    if (LexicalHandler* handler = lexical_handler()) handler->endCDATA();
}

void SaxDelivery::ev_start_entity(const Unit* name) {
    if (LexicalHandler* handler = lexical_handler()) handler->startEntity(string_of(name));
}

void SaxDelivery::ev_end_entity(const Unit* name) {
    if (LexicalHandler* handler = lexical_handler()) handler->endEntity(string_of(name));
}

void SaxDelivery::ev_start_dtd(const Unit* name, const Unit* publicId, const Unit* systemId) {
    if (LexicalHandler* handler = lexical_handler()) {
        handler->startDTD(string_of(name), string_of(publicId), string_of(systemId));
    }
}

void SaxDelivery::ev_end_dtd() {
    if (LexicalHandler* handler = lexical_handler()) handler->endDTD();
}

void SaxDelivery::ev_element_decl(const Unit* name, const Unit* model) {
    if (DeclHandler* handler = decl_handler())
        handler->elementDecl(string_of(name), string_of(model));
}

void SaxDelivery::ev_attlist_decl(const Name& name, const ElementRecord& element) {
    DeclHandler* handler = decl_handler();
    if (handler == nullptr) return;
    for (const AttDefRecord* definition : element.attDefs) {
        handler->attributeDecl(name.text, definition->name->text, definition->type->text,
                               string_of(definition->mode), string_of(definition->value));
    }
}

void SaxDelivery::ev_internal_entity_decl(const Unit* name, const Unit* value) {
    if (DeclHandler* handler = decl_handler())
        handler->internalEntityDecl(string_of(name), string_of(value));
}

void SaxDelivery::ev_external_entity_decl(const Unit* name, const Unit* publicId,
                                          const Unit* systemId, const Unit* /*notation*/) {
    if (DeclHandler* handler = decl_handler()) {
        handler->externalEntityDecl(string_of(name), string_of(publicId), string_of(systemId));
    }
}

void SaxDelivery::ev_notation_decl(const Unit* name, const Unit* publicId, const Unit* systemId) {
    if (DTDHandler* handler = reader.getDTDHandler()) {
        handler->notationDecl(string_of(name), string_of(publicId), string_of(systemId));
    }
}

}  // namespace qvox

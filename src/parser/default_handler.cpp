#include <qvox/sax.h>

namespace qvox {

InputSource::InputSource(const Xstring& identifier) : systemId(identifier) {}

InputSource::InputSource(const char* identifier) : systemId(identifier) {}

void DefaultHandler::characters(const Xstring& /*text*/) {}
void DefaultHandler::endDocument() {}
void DefaultHandler::endElement(const Xstring& /*uri*/, const Xstring& /*localName*/,
                                const Xstring& /*qName*/) {}
void DefaultHandler::endPrefixMapping(const Xstring& /*prefix*/) {}
void DefaultHandler::ignorableWhiteSpace(const Xstring& /*text*/) {}
void DefaultHandler::processingInstruction(const Xstring& /*target*/, const Xstring& /*data*/) {}
void DefaultHandler::setDocumentLocator(const Locator& /*locator*/) {}
void DefaultHandler::skippedEntity(const Xstring& /*name*/) {}
void DefaultHandler::startDocument() {}
void DefaultHandler::startElement(const Xstring& /*uri*/, const Xstring& /*localName*/,
                                  const Xstring& /*qName*/, const Attributes& /*attributes*/) {}
void DefaultHandler::startPrefixMapping(const Xstring& /*prefix*/, const Xstring& /*uri*/) {}

void DefaultHandler::notationDecl(const Xstring& /*name*/, const Xstring& /*publicId*/,
                                  const Xstring& /*systemId*/) {}
void DefaultHandler::unparsedEntityDecl(const Xstring& /*name*/, const Xstring& /*publicId*/,
                                        const Xstring& /*systemId*/,
                                        const Xstring& /*notationName*/) {}

InputSource DefaultHandler::resolveEntity(const Xstring& /*publicId*/,
                                          const Xstring& /*systemId*/) {
    return {};
}

void DefaultHandler::error(const SAXParseException& /*exception*/) {}
void DefaultHandler::fatalError(const SAXParseException& /*exception*/) {}
void DefaultHandler::warning(const SAXParseException& /*exception*/) {}

}  // namespace qvox

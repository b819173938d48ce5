#include <qvox/parser.h>

#include "parser/features.h"
#include "text/temporaries.h"

namespace qvox {

ContentHandler* SAXParser::getContentHandler() const { return contentHandler; }

DTDHandler* SAXParser::getDTDHandler() const { return dtdHandler; }

EntityResolver* SAXParser::getEntityResolver() const { return entityResolver; }

ErrorHandler* SAXParser::getErrorHandler() const { return errorHandler; }

void SAXParser::setContentHandler(const ContentHandler* handler) {
    contentHandler = const_cast<ContentHandler*>(handler);
}

void SAXParser::setDTDHandler(const DTDHandler* handler) {
    dtdHandler = const_cast<DTDHandler*>(handler);
}

void SAXParser::setEntityResolver(const EntityResolver* resolver) {
    entityResolver = const_cast<EntityResolver*>(resolver);
}

void SAXParser::setErrorHandler(const ErrorHandler* handler) {
    errorHandler = const_cast<ErrorHandler*>(handler);
}

bool SAXParser::getFeature(const char* name) const { return Parser::getFeature(name); }

void SAXParser::setFeature(const char* name, bool value) { Parser::setFeature(name, value); }

void* SAXParser::getProperty(const char* name) const {
    switch (ParserImpl::readableProperty(name, isParsing())) {
        case LEXICAL_HANDLER_SLOT: return lexicalHandler;
        case DECL_HANDLER_SLOT: return declHandler;
        default: return nullptr;
    }
}

void SAXParser::setProperty(const char* name, const void* value) {
    void* handler = const_cast<void*>(value);
    switch (ParserImpl::writableProperty(name, isParsing())) {
        case LEXICAL_HANDLER_SLOT: lexicalHandler = static_cast<LexicalHandler*>(handler); break;
        case DECL_HANDLER_SLOT: declHandler = static_cast<DeclHandler*>(handler); break;
        default: break;
    }
}

void SAXParser::parse(InputSource& source) {
    const OsTemp fileName(source.getSystemId().data());
    Parser::parse(fileName.get(), &source, nullptr, nullptr);
}

void SAXParser::parse(const char* systemId) {
    InputSource source(systemId);
    Parser::parse(systemId, &source, nullptr, nullptr);
}

}  // namespace qvox

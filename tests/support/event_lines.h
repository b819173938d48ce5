// The handlers of a SAX parse in one: each event becomes a name and its texts, in the order of the
// handler's arguments. What tests and fuzzers write down of a parse stands on this.
#pragma once

#include <initializer_list>

#include <qvox/qvox.h>

namespace qvox_test {

class EventLines : public qvox::ContentHandler,
                   public qvox::DTDHandler,
                   public qvox::EntityResolver,
                   public qvox::ErrorHandler,
                   public qvox::LexicalHandler,
                   public qvox::DeclHandler {
public:
    using Text = qvox::Xstring;
    using Exception = qvox::SAXParseException;

    EventLines() = default;
    EventLines(const EventLines&) = delete;
    EventLines& operator=(const EventLines&) = delete;
    virtual ~EventLines() = default;

    // Makes this all six handlers of the parser.
    void attach(qvox::SAXParser& parser) {
        parser.setContentHandler(this);
        parser.setDTDHandler(this);
        parser.setEntityResolver(this);
        parser.setErrorHandler(this);
        parser.setProperty(qvox::PROPERTY_LEXICAL_HANDLER,
                           static_cast<qvox::LexicalHandler*>(this));
        parser.setProperty(qvox::PROPERTY_DECL_HANDLER, static_cast<qvox::DeclHandler*>(this));
    }

    void characters(const Text& text) override {
        event(text.isBulk() ? "characters bulk" : "characters", {&text});
    }
    void endDocument() override { event("endDocument", {}); }
    void endElement(const Text& uri, const Text& local, const Text& qName) override {
        event("endElement", {&uri, &local, &qName});
    }
    void endPrefixMapping(const Text& prefix) override { event("endPrefixMapping", {&prefix}); }
    void ignorableWhiteSpace(const Text& text) override { event("ignorableWhiteSpace", {&text}); }
    void processingInstruction(const Text& target, const Text& data) override {
        event("processingInstruction", {&target, &data});
    }
    void setDocumentLocator(const qvox::Locator&) override { event("setDocumentLocator", {}); }
    void skippedEntity(const Text& name) override { event("skippedEntity", {&name}); }
    void startDocument() override { event("startDocument", {}); }
    void startPrefixMapping(const Text& prefix, const Text& uri) override {
        event("startPrefixMapping", {&prefix, &uri});
    }

    void notationDecl(const Text& name, const Text& publicId, const Text& systemId) override {
        event("notationDecl", {&name, &publicId, &systemId});
    }
    void unparsedEntityDecl(const Text& name, const Text& publicId, const Text& systemId,
                            const Text& notation) override {
        event("unparsedEntityDecl", {&name, &publicId, &systemId, &notation});
    }

    qvox::InputSource resolveEntity(const Text& publicId, const Text& systemId) override {
        event("resolveEntity", {&publicId, &systemId});
        return {};
    }

    void error(const Exception& exception) override { report("error", exception); }
    void fatalError(const Exception& exception) override { report("fatalError", exception); }
    void warning(const Exception& exception) override { report("warning", exception); }

    void comment(const Text& text) override { event("comment", {&text}); }
    void endCDATA() override { event("endCDATA", {}); }
    void endDTD() override { event("endDTD", {}); }
    void endEntity(const Text& name) override { event("endEntity", {&name}); }
    void startCDATA() override { event("startCDATA", {}); }
    void startDTD(const Text& name, const Text& publicId, const Text& systemId) override {
        event("startDTD", {&name, &publicId, &systemId});
    }
    void startEntity(const Text& name) override { event("startEntity", {&name}); }

    void attributeDecl(const Text& element, const Text& attribute, const Text& type,
                       const Text& valueDefault, const Text& value) override {
        event("attributeDecl", {&element, &attribute, &type, &valueDefault, &value});
    }
    void elementDecl(const Text& name, const Text& model) override {
        event("elementDecl", {&name, &model});
    }
    void externalEntityDecl(const Text& name, const Text& publicId, const Text& systemId) override {
        event("externalEntityDecl", {&name, &publicId, &systemId});
    }
    void internalEntityDecl(const Text& name, const Text& value) override {
        event("internalEntityDecl", {&name, &value});
    }

protected:
    // A text may be null. startElement, which has attributes, is for who derives.
    virtual void event(const char* name, std::initializer_list<const Text*> texts) = 0;
    virtual void report(const char* level, const Exception& exception) = 0;
};

}  // namespace qvox_test

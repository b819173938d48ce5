// The events of a parse, one a line.
//
// A line is the name of the event, as the handler interfaces have it, and its arguments in their
// order, each with its name: `startPrefixMapping prefix=null uri="urn:example:order"`. A text
// stands in quotes, and null is the bare word. The attributes of a start tag follow in brackets.
#pragma once

#include <initializer_list>
#include <string>

#include <qvox/qvox.h>

#include "output.h"

class EventPrinter final : public qvox::DefaultHandler,
                           public qvox::LexicalHandler,
                           public qvox::DeclHandler {
public:
    // Events go to `destination`; the name of the file serves the messages of warnings and errors.
    EventPrinter(Output& destination, const std::string& name)
        : output(destination), fileName(name) {}

    // Makes the parser report to this object.
    void attach(qvox::SAXParser& parser);

    using Text = qvox::Xstring;

    void characters(const Text& text) override;
    void endDocument() override;
    void endElement(const Text& uri, const Text& localName, const Text& qName) override;
    void endPrefixMapping(const Text& prefix) override;
    void ignorableWhiteSpace(const Text& text) override;
    void processingInstruction(const Text& target, const Text& data) override;
    void skippedEntity(const Text& name) override;
    void startDocument() override;
    void startElement(const Text& uri, const Text& localName, const Text& qName,
                      const qvox::Attributes& attributes) override;
    void startPrefixMapping(const Text& prefix, const Text& uri) override;

    void notationDecl(const Text& name, const Text& publicId, const Text& systemId) override;
    void unparsedEntityDecl(const Text& name, const Text& publicId, const Text& systemId,
                            const Text& notationName) override;

    void comment(const Text& text) override;
    void endCDATA() override;
    void endDTD() override;
    void endEntity(const Text& name) override;
    void startCDATA() override;
    void startDTD(const Text& name, const Text& publicId, const Text& systemId) override;
    void startEntity(const Text& name) override;

    void attributeDecl(const Text& elementName, const Text& attributeName, const Text& type,
                       const Text& valueDefault, const Text& value) override;
    void elementDecl(const Text& name, const Text& model) override;
    void externalEntityDecl(const Text& name, const Text& publicId, const Text& systemId) override;
    void internalEntityDecl(const Text& name, const Text& value) override;

    void error(const qvox::SAXParseException& exception) override;
    void fatalError(const qvox::SAXParseException& exception) override;
    void warning(const qvox::SAXParseException& exception) override;

private:
    struct Argument {
        const char* name;
        const Text& value;
    };
    using Arguments = std::initializer_list<Argument>;

    void print(const char* event, Arguments arguments = {});
    void printReport(const char* event, const qvox::SAXParseException& exception);

    void append(const Argument& argument);
    void endLine();

    Output& output;
    const std::string& fileName;
    std::string line;  // in the making
};

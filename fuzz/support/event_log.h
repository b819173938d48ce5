// The events of a SAX parse, written down and held against the rules that all event streams keep.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include <qvox/qvox.h>

namespace qvox_fuzz {

class EventLog : public qvox::ContentHandler,
                 public qvox::DTDHandler,
                 public qvox::EntityResolver,
                 public qvox::ErrorHandler,
                 public qvox::LexicalHandler,
                 public qvox::DeclHandler {
public:
    using Text = qvox::Xstring;
    using Exception = qvox::SAXParseException;

    EventLog() = default;
    EventLog(const EventLog&) = delete;
    EventLog& operator=(const EventLog&) = delete;
    virtual ~EventLog() = default;

    // Makes this all six handlers of the parser.
    void attach(qvox::SAXParser& parser);

    // A parse with this log, from its beginning. Returns the code of its exception, or 0.
    int parse(qvox::SAXParser& parser, const char* fileName);

    // Where two logs differ, as a text for people; empty where they don't. The first megabyte is
    // compared line by line, what comes behind it by its hash.
    static std::string difference(const EventLog& a, const EventLog& b);

    void characters(const Text& text) override;
    void endDocument() override;
    void endElement(const Text& uri, const Text& local, const Text& qName) override;
    void endPrefixMapping(const Text& prefix) override;
    void ignorableWhiteSpace(const Text& text) override;
    void processingInstruction(const Text& target, const Text& data) override;
    void setDocumentLocator(const qvox::Locator& locator) override;
    void skippedEntity(const Text& name) override;
    void startDocument() override;
    void startElement(const Text& uri, const Text& local, const Text& qName,
                      const qvox::Attributes& attributes) override;
    void startPrefixMapping(const Text& prefix, const Text& uri) override;

    void notationDecl(const Text& name, const Text& publicId, const Text& systemId) override;
    void unparsedEntityDecl(const Text& name, const Text& publicId, const Text& systemId,
                            const Text& notation) override;

    qvox::InputSource resolveEntity(const Text& publicId, const Text& systemId) override;

    void error(const Exception& exception) override;
    void fatalError(const Exception& exception) override;
    void warning(const Exception& exception) override;

    void comment(const Text& text) override;
    void endCDATA() override;
    void endDTD() override;
    void endEntity(const Text& name) override;
    void startCDATA() override;
    void startDTD(const Text& name, const Text& publicId, const Text& systemId) override;
    void startEntity(const Text& name) override;

    void attributeDecl(const Text& element, const Text& attribute, const Text& type,
                       const Text& valueDefault, const Text& value) override;
    void elementDecl(const Text& name, const Text& model) override;
    void externalEntityDecl(const Text& name, const Text& publicId, const Text& systemId) override;
    void internalEntityDecl(const Text& name, const Text& value) override;

private:
    void line(const char* event, std::initializer_list<const Text*> texts);
    void add(char byte);
    void add(const Text& text);
    void report(const char* event, const Exception& exception);
    void finish(int code);

    std::string text;        // the first events, a line each
    std::uint64_t hash = 0;  // of all
    bool isStarted = false;  // startDocument has come
    bool isEnded = false;    // endDocument has come
    bool hasError = false;   // nothing may come any more
    std::vector<std::string> openElements;
    std::vector<std::string> openPrefixes;
    bool isInCdata = false;
    bool isInDtd = false;
};

}  // namespace qvox_fuzz

// The events of a SAX parse, written down and held against the rules that all event streams keep.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include <qvox/qvox.h>

#include "support/event_lines.h"

namespace qvox_fuzz {

class EventLog : public qvox_test::EventLines {
public:
    // A parse with this log, from its beginning. Returns the code of its exception, or 0.
    int parse(qvox::SAXParser& parser, const char* fileName);

    // Where two logs differ, as a text for people; empty where they don't. The first megabyte is
    // compared line by line, what comes behind it by its hash.
    static std::string difference(const EventLog& a, const EventLog& b);

    void characters(const Text& content) override;
    void endDocument() override;
    void endElement(const Text& uri, const Text& local, const Text& qName) override;
    void endPrefixMapping(const Text& prefix) override;
    void startDocument() override;
    void startElement(const Text& uri, const Text& local, const Text& qName,
                      const qvox::Attributes& attributes) override;
    void startPrefixMapping(const Text& prefix, const Text& uri) override;
    void endCDATA() override;
    void endDTD() override;
    void startCDATA() override;
    void startDTD(const Text& name, const Text& publicId, const Text& systemId) override;
    void error(const Exception& exception) override;

    // Never told: these are faults.
    void fatalError(const Exception& exception) override;
    void ignorableWhiteSpace(const Text& content) override;
    void setDocumentLocator(const qvox::Locator& locator) override;
    void skippedEntity(const Text& name) override;
    void unparsedEntityDecl(const Text& name, const Text& publicId, const Text& systemId,
                            const Text& notation) override;
    qvox::InputSource resolveEntity(const Text& publicId, const Text& systemId) override;

protected:
    void event(const char* name, std::initializer_list<const Text*> texts) override;

private:
    void report(const char* level, const Exception& exception) override;
    void add(char byte);
    void add(const Text& text);
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

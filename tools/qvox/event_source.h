// The events of a parse, passed on to a sink.
//
// Events don't tell all of a document: which attributes a document type supplied, the notations of
// unparsed entities, carriage returns that references gave. A document with a document type, or
// with references to carriage returns, is read into a tree for these (tree_source.h).
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include <qvox/qvox.h>

#include "document_sink.h"
#include "markup_counter.h"

// Passes what a parser reports on to a sink, but for the XML declaration, which is no event, and
// the document type, whose comments and
// processing instructions are only counted.
class EventSource final : public MarkupCounter {
public:
    EventSource(DocumentSink& destination, int& place) : MarkupCounter(place), sink(destination) {}

    // Makes the parser report to this object; its error handler stays what it is.
    void attach(qvox::SAXParser& parser);

    const Literals& literals() const { return recorder.literals(); }
    // Where the document type declaration stands.
    int placeOfDocumentType() const { return typePlace; }
    // Comments and processing instructions in the document type.
    int lostMarkup() const { return lost; }
    // Attributes that stand a second time in a tag, as messages with their places.
    struct Repetition {
        int place;
        std::string attribute;  // in UTF-8, escaped
    };
    const std::vector<Repetition>& repetitions() const { return repeated; }

    using Text = qvox::Xstring;

    void characters(const Text& text) override;
    void endElement(const Text& uri, const Text& localName, const Text& qName) override;
    void processingInstruction(const Text& target, const Text& data) override;
    void startElement(const Text& uri, const Text& localName, const Text& qName,
                      const qvox::Attributes& attributes) override;

    void comment(const Text& text) override;
    void endCDATA() override;
    void startCDATA() override;
    void startDTD(const Text& name, const Text& publicId, const Text& systemId) override;

private:
    void takeAttribute(UnitView name, UnitView value);
    std::size_t indexOf(UnitView name);

    DocumentSink& sink;
    LiteralRecorder recorder;
    int typePlace = 0;
    int lost = 0;
    std::vector<Repetition> repeated;
    std::vector<Attribute> attributes;        // of the tag in hand
    std::map<UnitView, std::size_t> indexes;  // of its attributes, where they are many
};

// Reads a document for a sink, as a stream of events where these tell all of it, else out of a
// tree.
#pragma once

#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "document.h"
#include "document_sink.h"
#include "event_source.h"

enum class Way { EVENTS, TREE };

// Whether the files that a document names are opened.
enum class Externals { OPENED, REFUSED };

// How the file has to be read. A tree knows more than events do: which attributes the document type
// supplied, the notations of unparsed entities, and carriage returns that references gave.
Way way_to_read(const std::string& path, Externals externals);

// What a parse has noticed besides.
struct Findings {
    Literals literals;
    int placeOfDocumentType = 0;
    int lostMarkup = 0;
    std::vector<EventSource::Repetition> repetitions;
};

// Passes the events of a parse to the sink, and warnings and errors to the handler if there is one.
// `place` is kept as MarkupCounter does. Returns what went wrong, if anything did. Lets what the
// sink throws through, here and below.
std::optional<Failure> pass_events(const std::string& path, Externals externals,
                                   qvox::ErrorHandler* errorHandler, DocumentSink& sink, int& place,
                                   Findings& findings);

// Parses into a tree and passes that.
std::optional<Failure> pass_nodes(const std::string& path, Externals externals,
                                  const Literals& literals, DocumentSink& sink);

// A document without warnings, either way.
std::optional<Failure> pass_document(const std::string& path, Way way, Externals externals,
                                     DocumentSink& sink);

// As the flag --no-external was given.
inline Externals externals_of(const CLI::Option& noExternal) {
    return noExternal.count() > 0 ? Externals::REFUSED : Externals::OPENED;
}

// Takes no notice.
class NullSink final : public DocumentSink {
public:
    void xmlDeclaration(const XmlDeclaration& /*declaration*/) override {}
    void documentType(UnitView /*text*/, const Literals& /*literals*/) override {}
    void startElement(UnitView /*name*/, const std::vector<Attribute>& /*attributes*/) override {}
    void endElement(UnitView /*name*/) override {}
    void text(UnitView /*text*/) override {}
    void startCdata() override {}
    void endCdata() override {}
    void comment(UnitView /*text*/) override {}
    void processingInstruction(UnitView /*target*/, UnitView /*data*/) override {}
};

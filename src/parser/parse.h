// One document on its way through the library: all that lives for a parse, in the order in which
// data flows. Each part knows those above it, and no other.
#pragma once

#include <memory>

#include <qvox/parser.h>

#include "input/input.h"
#include "input/level_events.h"
#include "parser/parse_reports.h"
#include "platform/byte_stream.h"
#include "runtime/heap.h"
#include "runtime/report.h"
#include "scanner/content.h"
#include "scanner/document_actions.h"
#include "scanner/dtd_actions.h"
#include "scanner/events.h"
#include "scanner/grammar.h"
#include "scanner/lexer.h"
#include "scanner/names.h"

namespace qvox {

class Parse final : private LevelEvents {
public:
    // Takes the file over; there is none for a document in memory. The parser counts as parsing,
    // and hears of this thread's reports, until the parse has ended.
    Parse(Parser& parser, InputSource* source, std::unique_ptr<ByteStream> file, Events& receiver);
    Parse(const Parse&) = delete;
    Parse& operator=(const Parse&) = delete;
    ~Parse();

    // Reads the document and raises its events. `name` is for messages.
    void run(const char* name, const Unit* memory);

private:
    // Sets the parser's state for as long as the parse lasts.
    struct Running {
        Running(Parser& parser, InputSource* source);
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;
        ~Running() { stop(); }
        void stop();

        Parser& parser;
    };

    void ev_start_entity(const Unit* name) override { events.ev_start_entity(name); }
    void ev_end_entity(const Unit* name) override { events.ev_end_entity(name); }
    void subset_level_started() override { lexer.subset_level_started(); }
    void subset_level_ended() override { lexer.subset_level_ended(); }

    // From here on no report reaches an error handler.
    void end();

    Running running;
    std::unique_ptr<ByteStream> document;
    Heap heap;             // what lives as long as the parse
    Events& events;        // the handlers of a SAX parse, or a tree under construction
    Input input;           // levels, look-ahead, line and column, budget
    ParseReports reports;  // who is told of trouble, and where the parse stands
    ReportScope reportScope;
    Names names;        // kept once each
    Declarations dtd;   // elements, attributes, entities
    Elements elements;  // the open ones, the namespaces in force, the tag in hand
    Lexer lexer;        // the exact way: tokens for the grammar
    Content content;    // the straight way: pieces of content
    Grammar grammar;
    bool hasEnded = false;
};

}  // namespace qvox

// The run of one parse: what it sets up and tears down, and what exists while it lasts.
#pragma once

#include <memory>

#include <qvox/parser.h>

#include "platform/byte_stream.h"

namespace qvox {

// The object whose parse is running; null outside a parse. Written by the run of a parse only.
extern Parser* currentParser;

// A feature of currentParser.
bool feature_of(const char* name);

// Everything that a parse needs, from its heap to its position in the input. It is set up in order,
// and torn down in the reverse order however the parse ends.
class ParseRun {
public:
    // Takes the file over; there is none for a document in memory.
    ParseRun(Parser& parser, InputSource* source, std::unique_ptr<ByteStream> file);
    ParseRun(const ParseRun&) = delete;
    ParseRun& operator=(const ParseRun&) = delete;
    ~ParseRun();

    // Reads the document and raises its events. `name` is for messages.
    void run(const char* name, const unsigned short* memory);

private:
    void tearDown(bool accepted);

    Parser& parser;
    std::unique_ptr<ByteStream> file;
    bool isOpen = true;
};

}  // namespace qvox

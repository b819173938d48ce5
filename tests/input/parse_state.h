// What a running parse has before its first token, for tests of the rooms that rest on it.
#pragma once

#include <memory>
#include <string>

#include "input/input_stack.h"
#include "parser/parse_run.h"
#include "runtime/heap.h"
#include "scanner/document_actions.h"
#include "scanner/lexer.h"
#include "support/recorder.h"

namespace qvox_test {

inline const qvox::Unit* units(const char16_t* text) {
    return reinterpret_cast<const qvox::Unit*>(text);
}

// Each call writes a file of its own.
inline std::unique_ptr<qvox::ByteStream> stream_of(const std::string& bytes) {
    static int count = 0;
    const std::string name = "stream" + std::to_string(count++);
    write_file(name, bytes);
    return qvox::ByteStream::open(name.c_str());
}

struct ParseState {
    ParseState() {
        recorder.attach(parser);
        qvox::currentParser = &parser;
        qvox::parseHeap = qvox::heap_create();
        qvox::lexer_start();
        qvox::actions_init({true, false});
    }
    ParseState(const ParseState&) = delete;
    ParseState& operator=(const ParseState&) = delete;
    ~ParseState() {
        qvox::actions_end(false);
        qvox::lexer_end(false);
        qvox::close_input();
        qvox::heap_destroy(qvox::parseHeap);
        qvox::parseHeap = nullptr;
        qvox::currentParser = nullptr;
    }

    void open(const std::string& bytes) {
        document = stream_of(bytes);
        qvox::open_input("doc.xml", document.get(), nullptr);
    }

    Recorder recorder;
    qvox::SAXParser parser;
    std::unique_ptr<qvox::ByteStream> document;
};

}  // namespace qvox_test

#include <mutex>

#include <qvox/parser.h>

#include "input/input_stack.h"
#include "parser/features.h"
#include "parser/parse_run.h"
#include "parser/tree_builder.h"
#include "runtime/library.h"
#include "runtime/report.h"
#include "text/temporaries.h"

namespace qvox {

namespace {

using ParseGuard = std::unique_lock<Lock>;

// A parse from inside a handler would overwrite the state of the one that is running.
void refuse_nested_parse() {
    if (currentParser == nullptr) return;
    qvox_report(REPORT_ERROR, QVOXException::INTERNAL_ERR, "parse already running");
}

// The document's file; null for a document in memory. The lock is given back ahead of a report.
std::unique_ptr<ByteStream> open_document(const char* fileName, const unsigned short* memory,
                                          ParseGuard& guard) {
    if (memory != nullptr) return nullptr;
    std::unique_ptr<ByteStream> file = open_system_id(fileName);
    if (file == nullptr) {
        guard.unlock();
        qvox_report(REPORT_ERROR, QVOXException::FILE_OPEN_ERR, "file (%s) cannot open",
                    fileName != nullptr ? fileName : "(null)");
    }
    return file;
}

void log_exception(const QVOXException& exception) {
    if (!debugEnabled) return;
    qvox_debug("parser catch user throw (%s)\n", OsTemp(exception.getMessage().data()).get());
}

}  // namespace

Parser::Parser() : impl(new ParserImpl), parsing(false), inputSource(nullptr) { parser_created(); }

Parser::~Parser() {
    parser_destroyed();
    delete impl;
}

bool Parser::getFeature(const char* name) const { return impl->feature(name, parsing); }

void Parser::setFeature(const char* name, bool value) { impl->setFeature(name, value, parsing); }

void Parser::parse(const char* fileName, InputSource* source, unsigned short* memory,
                   Document** document) {
    ParseGuard guard(parseLock);
    refuse_nested_parse();
    ParseRun parseRun(*this, source, open_document(fileName, memory, guard));
    try {
        parseRun.run(fileName, memory);
        if (document != nullptr) *document = tree::release();
    } catch (const QVOXException& exception) {
        log_exception(exception);
        throw QVOXException(exception);  // of this very class, whatever was caught
    }
}

}  // namespace qvox

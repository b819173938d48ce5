#include <qvox/parser.h>

#include "input/input.h"
#include "parser/features.h"
#include "parser/parse.h"
#include "parser/sax_delivery.h"
#include "parser/tree_builder.h"
#include "runtime/library.h"
#include "runtime/parse_turn.h"
#include "runtime/report.h"
#include "text/temporaries.h"

namespace qvox {

namespace {

// The document's file; null for a document in memory. A file that can't be opened is no matter of a
// parse that may be running on this thread, and the turn is given back ahead of the report.
std::unique_ptr<ByteStream> open_document(const char* fileName, const Unit* memory,
                                          ParseTurn& turn) {
    if (memory != nullptr) return nullptr;
    std::unique_ptr<ByteStream> file = open_system_id(fileName);
    if (file == nullptr) {
        turn.end();
        const ReportScope unheard(nullptr);
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
    const bool isConcurrent = getFeature(FEATURE_CONCURRENT);
    if (isConcurrent && parsing) refuse_nested_parse();
    ParseTurn turn(isConcurrent);
    std::unique_ptr<ByteStream> file = open_document(fileName, memory, turn);
    const auto run = [&](Events& events) {
        Parse parse(*this, source, std::move(file), events);
        try {
            parse.run(fileName, memory);
        } catch (const QVOXException& exception) {
            log_exception(exception);
            throw QVOXException(exception);  // of this very class, whatever was caught
        }
    };
    if (getType() == DOM_PARSER) {
        TreeBuilder builder;
        run(builder);
        *document = builder.release();
    } else {
        SaxDelivery delivery(static_cast<SAXParser&>(*this));
        run(delivery);
    }
}

}  // namespace qvox

#include "parser/parse_run.h"

#include <utility>

#include "input/input_stack.h"
#include "parser/sax_types.h"
#include "parser/tree_builder.h"
#include "runtime/heap.h"
#include "runtime/report.h"
#include "scanner/document_actions.h"
#include "scanner/grammar.h"
#include "scanner/lexer.h"

namespace qvox {

Parser* currentParser = nullptr;

namespace {

void call_error_handler(ErrorHandler& handler, int level, const SAXParseException& exception) {
    switch (level) {
        case REPORT_WARNING: handler.warning(exception); break;
        case REPORT_ERROR: handler.error(exception); break;
        default: handler.fatalError(exception); break;
    }
}

bool tellingErrorHandler = false;

// Set for the duration of a call of the error handler.
struct Telling {
    Telling() { tellingErrorHandler = true; }
    ~Telling() { tellingErrorHandler = false; }
    Telling(const Telling&) = delete;
    Telling& operator=(const Telling&) = delete;
};

// Tells the error handler of a running SAX parse what is being reported, and where. What the
// handler itself causes, such as the refusal of a parse that it starts, isn't told again.
void tell_error_handler(int level, QVOXException::Code code, const char* message) {
    if (tellingErrorHandler || currentParser == nullptr ||
        currentParser->getType() != Parser::SAX_PARSER || !currentParser->isParsing()) {
        return;
    }
    ErrorHandler* handler = static_cast<SAXParser*>(currentParser)->getErrorHandler();
    if (handler == nullptr) return;
    const InputSource& source = *currentParser->getInputSource();
    const LocatorImpl locator(tokenCol, curLine, source.getPublicId(), source.getSystemId());
    const Telling telling;
    call_error_handler(*handler, level, SAXParseException(code, message, locator));
}

}  // namespace

bool feature_of(const char* name) { return currentParser->getFeature(name); }

ParseRun::ParseRun(Parser& runningParser, InputSource* source, std::unique_ptr<ByteStream> openFile)
    : parser(runningParser), file(std::move(openFile)) {
    parser.parsing = true;
    parser.inputSource = source;
    parseHeap = heap_create();
    currentParser = &parser;
    reportHook = tell_error_handler;
}

ParseRun::~ParseRun() {
    if (isOpen) tearDown(false);
}

void ParseRun::run(const char* name, const unsigned short* memory) {
    lexer_start();
    open_input(name, file.get(), memory);
    actions_init({feature_of(FEATURE_NAMESPACES), feature_of(FEATURE_NAMESPACE_PREFIXES)});
    grammar_run();
    tearDown(true);
}

void ParseRun::tearDown(bool accepted) {
    isOpen = false;
    parser.parsing = false;  // from here on no report reaches an error handler
    actions_end(accepted);
    lexer_end(accepted);
    close_input();
    heap_destroy(parseHeap);
    parseHeap = nullptr;
    currentParser = nullptr;
    file.reset();
    if (!accepted) tree::discard();
}

}  // namespace qvox

#include "parser/parse_reports.h"

#include "parser/sax_types.h"

namespace qvox {

namespace {

void call_error_handler(ErrorHandler& handler, ReportLevel level,
                        const SAXParseException& exception) {
    switch (level) {
        case REPORT_WARNING: handler.warning(exception); break;
        case REPORT_ERROR: handler.error(exception); break;
        case REPORT_FATAL: handler.fatalError(exception); break;
    }
}

// True for as long as the object lives.
class Flag {
public:
    explicit Flag(bool& raised) : flag(raised) { flag = true; }
    Flag(const Flag&) = delete;
    Flag& operator=(const Flag&) = delete;
    ~Flag() { flag = false; }

private:
    bool& flag;
};

}  // namespace

void ParseReports::hear(ReportLevel level, QVOXException::Code code, const char* message) {
    if (!parser.isParsing()) return;
    if (level == REPORT_ERROR) note_error_place(input.curLine(), input.tokenCol());
    if (tellingErrorHandler || parser.getType() != Parser::SAX_PARSER) return;
    ErrorHandler* handler = static_cast<SAXParser&>(parser).getErrorHandler();
    if (handler == nullptr) return;
    const InputSource& source = *parser.getInputSource();
    const LocatorImpl locator(input.tokenCol(), input.curLine(), source.getPublicId(),
                              source.getSystemId());
    const Flag telling(tellingErrorHandler);
    call_error_handler(*handler, level, SAXParseException(code, message, locator));
}

}  // namespace qvox

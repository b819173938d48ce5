#include "scanner/scanner_error.h"

#include <cstdlib>

#include "input/input_stack.h"
#include "runtime/report.h"
#include "scanner/token_buffer.h"
#include "text/temporaries.h"

namespace qvox {

namespace {

[[noreturn]] void error_at(int code, const char* first, const char* second, const Unit* text,
                           int column) {
    const OsTemp token(text);
    qvox_report(REPORT_ERROR, code, "%s : %s (%s) at line %d, col %d", first, second, token.get(),
                curLine, column);
    std::abort();  // an error report always throws
}

}  // namespace

void lex_error(int code, const char* message, std::size_t tokenOffset) {
    error_at(code, message, docName.c_str(), terminated_token() + tokenOffset, curCol);
}

void syntax_error(const char* message) {
    error_at(QVOXException::SYNTAX_ERR, docName.c_str(), message, tokenText, tokenCol);
}

}  // namespace qvox

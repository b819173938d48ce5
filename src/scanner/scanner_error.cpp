#include "scanner/scanner_error.h"

#include <cstdlib>

#include "runtime/report.h"
#include "text/temporaries.h"

namespace qvox {

void ScannerErrors::lex_error(QVOXException::Code code, const char* message,
                              std::size_t tokenOffset) const {
    error_at(code, message, input.docName(), token.terminate() + tokenOffset, input.curCol());
}

void ScannerErrors::syntax_error(const char* message) const {
    error_at(QVOXException::SYNTAX_ERR, input.docName(), message, token.text(), input.tokenCol());
}

void ScannerErrors::error_at(QVOXException::Code code, const char* first, const char* second,
                             const Unit* text, int column) const {
    const OsTemp shown(text);
    qvox_report(REPORT_ERROR, code, "%s : %s (%s) at line %d, col %d", first, second, shown.get(),
                input.curLine(), column);
    std::abort();  // an error report always throws
}

}  // namespace qvox

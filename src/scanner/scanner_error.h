// Errors with the scanner's position in their text.
#pragma once

#include <cstddef>

#include <qvox/exception.h>

#include "input/input.h"
#include "scanner/token_buffer.h"

namespace qvox {

class ScannerErrors {
public:
    ScannerErrors(Input& inputOfParse, TokenBuffer& tokenInHand)
        : input(inputOfParse), token(tokenInHand) {}

    // An error found by the scanner: "message : document (token text) at line L, col C" with the
    // token text from the unit `tokenOffset` on and the column in which the scanner stands. Throws.
    [[noreturn]] void lex_error(QVOXException::Code code, const char* message,
                                std::size_t tokenOffset) const;

    // An error found by the grammar: "document : message (token text) at line L, col C" with the
    // column in which the token began. Throws.
    [[noreturn]] void syntax_error(const char* message) const;

private:
    [[noreturn]] void error_at(QVOXException::Code code, const char* first, const char* second,
                               const Unit* text, int column) const;

    Input& input;
    TokenBuffer& token;
};

}  // namespace qvox

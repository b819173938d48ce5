// Errors with the scanner's position in their text.
#pragma once

#include <cstddef>

#include <qvox/exception.h>

namespace qvox {

// An error found by the scanner: "message : document (token text) at line L, col C" with the token
// text from the unit `tokenOffset` on and the column in which the scanner stands. Throws.
[[noreturn]] void lex_error(int code, const char* message, std::size_t tokenOffset);

// An error found by the grammar: "document : message (token text) at line L, col C" with the column
// in which the token began. Throws.
[[noreturn]] void syntax_error(const char* message);

}  // namespace qvox

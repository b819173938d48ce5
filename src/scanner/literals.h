// Quoted literals: read with the references that their kind allows, and checked by their kind.
#pragma once

#include "text/wide.h"

namespace qvox {

// Reads the literal of the kind `token` behind its opening `quote`, which is in hand, into the
// token buffer. Returns the first character behind the closing quote; an encoding name has changed
// the decoder by then. A quote from an entity's text closes the literal too, one from a character
// reference doesn't.
int read_literal(int quote, int token);

// Raises the error of a public identifier, version number, standalone value or encoding name that
// is not well formed, and lets an encoding name take effect. Other literals pass.
void check_literal(int token, const Unit* text);

}  // namespace qvox

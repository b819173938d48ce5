// References are resolved in the scanner, before the grammar sees anything: a character reference
// is a character, an entity reference a new level of the input stack.
#pragma once

#include "text/wide.h"

namespace qvox {

// Reads the reference that begins with `c`, '&' or '%', which is the character in hand; any other
// value is returned as it came. Returns the next character to be processed: the value of a
// character reference, in which case the flag that `isCharRef` may point to is set, or the first
// character of an entity's text, or what follows a reference that stands for nothing. Leaves no
// trace in the token.
int read_reference(int c, bool* isCharRef);

// Pushes the entity's replacement text or file. A name without declaration, and a file that can't
// be opened, are warnings; these, an entity with a public identifier and one without any text stand
// for nothing. A parameter entity's name begins with '%'.
void push_entity(const Unit* name);

}  // namespace qvox

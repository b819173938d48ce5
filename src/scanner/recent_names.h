// The names that the scanner met last. A document has few names and repeats them in every tag: one
// copy on the parse heap serves all, and equal names mostly are the same pointer.
#pragma once

#include <cstddef>

#include "text/wide.h"

namespace qvox {

// Forgets all names, for a new parse.
void recent_names_start();

// A name of `length` units, which lasts as long as the parse and isn't to be changed.
Unit* kept_name(const Unit* text, std::size_t length);

}  // namespace qvox

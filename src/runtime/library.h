// What exists once in the process: the start of the library and the count of parsers.
#pragma once

namespace qvox {

// Reads the environment switches QVOX_DEBUG and QVOX_MEMSTAT. Runs once, when the library is
// loaded.
void library_start();

// Counts a new parser. Safe on any thread, as is its counterpart.
void parser_created();

// The last parser takes the conversion buffer with it.
void parser_destroyed();

}  // namespace qvox

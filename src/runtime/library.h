// What exists once in the process: the start of the library, the count of parsers and the lock that
// lets one parse run at a time.
#pragma once

#include "platform/lock.h"

namespace qvox {

// Reads the environment switches QVOX_DEBUG and QVOX_MEMSTAT. Runs once, when the library is
// loaded.
void library_start();

// Counts a new parser. Safe on any thread, as is its counterpart.
void parser_created();

// The last parser takes the conversion buffer with it.
void parser_destroyed();

// Held by a running parse from before its input is opened to after it is closed.
extern Lock parseLock;

}  // namespace qvox

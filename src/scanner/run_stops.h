// What ends a run of plain characters in the texts that the scanner reads: everything that the loop
// over single characters looks at.
#pragma once

#include "input/input.h"
#include "input/run_stops.h"
#include "scanner/token_buffer.h"

namespace qvox {

extern const RunStops CONTENT_STOPS;  // character data
extern const RunStops NAME_STOPS;     // a name: what isn't a name character of ASCII
extern const RunStops LITERAL_STOPS;  // a quoted literal
extern const RunStops COMMENT_STOPS;
extern const RunStops CDATA_STOPS;  // CDATA sections and processing instructions

// Appends the plain characters that can be had at once. What ends the run is read as ever.
inline void append_run(TokenBuffer& token, Input& input, const RunStops& stops) {
    token.append_by([&](Unit* to, std::size_t room) { return input.curGetRun(to, room, stops); });
}

}  // namespace qvox

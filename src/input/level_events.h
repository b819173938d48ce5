// What the layers below the input stack in the data flow do when a level begins or ends. The input
// stack calls these; they are defined where the work is done, so that input includes nothing of the
// scanner or the parsers.
#pragma once

#include "text/wide.h"

namespace qvox {

// A level with a name begins or has ended: an entity, or the external subset under the name
// "[dtd]". Defined with the other events of a parse.
void ev_start_entity(const Unit* name);
void ev_end_entity(const Unit* name);

// The external subset begins or has ended: the lexer takes its state and a pending token from that.
// Defined by the lexer.

void subset_level_started();
void subset_level_ended();

}  // namespace qvox

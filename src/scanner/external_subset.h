// The loading of the external subset, behind the '>' of the document type declaration.
#pragma once

#include "text/wide.h"

namespace qvox {

// Pushes the file on the input stack, so that the next tokens come from it. Without a system
// identifier, and for a document in memory, nothing happens; a file that can't be opened is a
// warning, and the parse goes on without the subset.
void load_external_subset(const Unit* publicId, const Unit* systemId);

}  // namespace qvox

// How many display cells the units of each kind of level take.
#pragma once

#include <cstddef>

#include "text/encoding_id.h"
#include "text/wide.h"

namespace qvox {

using CountCells = std::size_t (*)(const Unit* from, const Unit* to);

// Of a file. What a file in UTF-16 counts, a document in memory counts too.
CountCells select_count_cells(EncodingId encoding);

}  // namespace qvox

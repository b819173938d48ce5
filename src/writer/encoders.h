// The narrow output encodings.
#pragma once

#include <cstddef>

#include "text/encoding_id.h"
#include "text/wide.h"

namespace qvox {

// Writes the units in Shift_JIS, or in EUC-JP where that is asked for, with `?` for what the
// encoding doesn't have. `to` needs room for two bytes a unit. Returns where the bytes end.
char* encode_units(EncodingId encoding, const Unit* units, std::size_t count, char* to);

}  // namespace qvox

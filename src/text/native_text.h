// Conversion of whole texts between bytes in one of the Japanese encodings and 16-bit units.
#pragma once

#include <cstddef>

#include "text/encoding_id.h"
#include "text/wide.h"

namespace qvox {

// Converts NUL-terminated bytes to units and a NUL, with LF for each CR LF; a CR alone stays. `out`
// needs room for a unit a byte and the NUL. `outLength`, which may be null, takes the number of
// units. A byte or pair that is no character gives a unit 0 inside the text. Escape sequences are
// not interpreted; for UTF8 and UTF16 bytes just widen. Returns `out`.
Unit* native_to_wide(EncodingId encoding, const char* text, Unit* out, std::size_t* outLength);

// Converts NUL-terminated units to bytes and a NUL, with CR LF for each LF; a CR in the text stays
// beside it. `out` needs room for two bytes a unit and the NUL. `outLength`, which may be null,
// takes the number of bytes. JIS comes without escape sequences; for UTF8 and UTF16 units lose
// their high byte. Returns `out`.
char* wide_to_native(EncodingId encoding, const Unit* text, char* out, std::size_t* outLength);

}  // namespace qvox

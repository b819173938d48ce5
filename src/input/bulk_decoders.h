// The bulk decoders: each turns bytes of a file into units ahead of the reader, with the line ends
// normalised. None ever reports anything. At whatever isn't usual (a sequence that isn't whole or
// isn't valid, a control, a CR without LF) it ends in front of it, and the decoder by characters,
// which is the definition, takes over there.
#pragma once

#include <cstddef>

#include "input/byte_order.h"
#include "text/encoding_id.h"
#include "text/wide.h"

namespace qvox {

// Bytes that become units: both ends move on as far as they do.
struct Stretch {
    const unsigned char* from;
    const unsigned char* fromEnd;
    Unit* to;
    Unit* toEnd;     // up to OVERRUN units behind it may be written to, too
    bool kanjiMode;  // of ISO-2022-JP
};

inline constexpr std::size_t OVERRUN = 16;

using BulkDecoder = void (*)(Stretch& stretch);

BulkDecoder select_bulk_decoder(EncodingId encoding, ByteOrder byteOrder);

// The same for a string in memory, which a NUL ends, as bytes: all its units are taken as they are.
void copy_units(Stretch& stretch);

}  // namespace qvox

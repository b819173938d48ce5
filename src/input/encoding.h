// Detection of a file's encoding by its first four bytes. It tells the UTF family only: the other
// encodings are reached by a declaration in a file that began as UTF-8.
#pragma once

#include "input/cursor.h"
#include "platform/byte_stream.h"
#include "text/encoding_id.h"

namespace qvox {

struct DetectedEncoding {
    EncodingId encoding;
    ByteOrder byteOrder;
};

// Looks at a file that stands at its start, and leaves it at its first character, behind a byte
// order mark. A file that can't be XML is an error.
DetectedEncoding detect_encoding(ByteStream& file);

}  // namespace qvox

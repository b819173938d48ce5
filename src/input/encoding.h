// Detection of a file's encoding by its first four bytes. It tells the UTF family only: the other
// encodings are reached by a declaration in a file that began as UTF-8.
#pragma once

#include "platform/byte_stream.h"

namespace qvox {

// Sets docEncoding and byteOrder for a file that stands at its start, and leaves it at its first
// character, behind a byte order mark. A file that can't be XML is an error.
void detect_encoding(ByteStream& file);

}  // namespace qvox

// The order of the two bytes of a unit in a file.
#pragma once

namespace qvox {

// (The C library has macros with the plain names.)
enum ByteOrder : int { NO_BYTE_ORDER = 0, BYTES_BIG_ENDIAN = 1, BYTES_LITTLE_ENDIAN = 2 };

}  // namespace qvox

// What the end of a file means.
#pragma once

#include "platform/byte_stream.h"

namespace qvox {

// Behind the END of a file: raises the error of a file that ended because it can't be read on.
void check_end_of_file(const ByteStream& file);

}  // namespace qvox

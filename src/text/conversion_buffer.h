// The one buffer that Xstring's conversions without a caller's buffer return. It is not protected
// by any lock.
#pragma once

#include <cstddef>

namespace qvox {

// The buffer with room for at least `size` bytes; it grows and never shrinks. A `size` of 0 frees
// it and yields null.
char* conversion_buffer(std::size_t size);

}  // namespace qvox

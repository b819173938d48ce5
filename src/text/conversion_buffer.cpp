#include "text/conversion_buffer.h"

#include "runtime/allocation.h"

namespace qvox {

namespace {

char* conversionBuffer = nullptr;
std::size_t conversionBufferSize = 0;

}  // namespace

char* conversion_buffer(std::size_t size) {
    if (size == 0) {
        if (conversionBuffer != nullptr) qvox_free(conversionBuffer);
        conversionBuffer = nullptr;
        conversionBufferSize = 0;
    } else if (conversionBuffer == nullptr) {
        conversionBuffer = static_cast<char*>(qvox_malloc(size));
        conversionBufferSize = size;
    } else if (size > conversionBufferSize) {
        conversionBuffer = static_cast<char*>(qvox_realloc(conversionBuffer, size));
        conversionBufferSize = size;
    }
    return conversionBuffer;
}

}  // namespace qvox

#include "scanner/token_buffer.h"

#include "runtime/allocation.h"

namespace qvox {

namespace {

// Not the size of the largest token, which few documents have: memory that is never touched costs a
// small document dearly.
constexpr std::size_t FIRST_CAPACITY = 1024;

std::size_t bytes_for(std::size_t units) { return (units + 1) * sizeof(Unit); }

}  // namespace

TokenBuffer::TokenBuffer()
    : tokenText(static_cast<Unit*>(qvox_malloc(bytes_for(FIRST_CAPACITY)))),
      tokenLen(0),
      tokenCap(FIRST_CAPACITY) {
    terminate();
}

TokenBuffer::~TokenBuffer() { qvox_free(tokenText); }

void TokenBuffer::grow() {
    tokenText = static_cast<Unit*>(qvox_realloc(tokenText, bytes_for(2 * tokenCap)));
    tokenCap *= 2;
}

void TokenBuffer::append_pair(int c) {
    append_unit(static_cast<Unit>(0xD800 + ((c - 0x10000) >> 10)));
    append_unit(static_cast<Unit>(0xDC00 + ((c - 0x10000) & 0x3FF)));
}

}  // namespace qvox

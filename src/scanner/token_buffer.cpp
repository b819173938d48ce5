#include "scanner/token_buffer.h"

#include "runtime/allocation.h"

namespace qvox {

Unit* tokenText = nullptr;
std::size_t tokenLen = 0;
std::size_t tokenCap = 0;

namespace {

constexpr std::size_t FIRST_CAPACITY = 65536;

std::size_t bytes_for(std::size_t units) { return (units + 1) * sizeof(Unit); }

}  // namespace

void token_buffer_create() {
    tokenText = static_cast<Unit*>(qvox_malloc(bytes_for(FIRST_CAPACITY)));
    tokenCap = FIRST_CAPACITY;
    tokenLen = 0;
    tokenText[0] = 0;
}

void token_buffer_destroy() {
    if (tokenText != nullptr) qvox_free(tokenText);
    tokenText = nullptr;
    tokenCap = 0;
    tokenLen = 0;
}

void grow_token_buffer() {
    tokenText = static_cast<Unit*>(qvox_realloc(tokenText, bytes_for(2 * tokenCap)));
    tokenCap *= 2;
}

}  // namespace qvox

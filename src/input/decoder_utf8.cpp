#include "input/decoder_steps.h"

namespace qvox {

namespace {

constexpr bool is_continuation(int byte) {
    return (byte & 0xC0) == 0x80;
}

// Only sequences of three bytes are supported beside ASCII. END has both top bits set and so is no
// continuation.
int three_byte_character(int lead) {
    if ((lead & 0xF0) != 0xE0) invalid_character("not supported UTF-8 char", lead);
    const int second = curFile->get();
    if (!is_continuation(second)) invalid_character("illegal UTF-8 second char", lead);
    const int third = curFile->get();
    if (!is_continuation(third)) invalid_character("illegal UTF-8 third char", lead);
    ++curCol;
    return (lead & 0x0F) << 12 | (second & 0x3F) << 6 | (third & 0x3F);
}

}  // namespace

int getc_utf8() {
    const int byte = curFile->get();
    if (byte == ByteStream::END) return pop_input();
    if (byte < 0x80) return finish_ascii(byte);
    ++curCol;
    return finish_character(three_byte_character(byte));
}

}  // namespace qvox

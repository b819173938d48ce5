#include "input/decoder_steps.h"

namespace qvox {

namespace {

constexpr bool is_continuation(int byte) { return (byte & 0xC0) == 0x80; }

constexpr int joined(int lead, int second, int third) {
    return (lead & 0x0F) << 12 | (second & 0x3F) << 6 | (third & 0x3F);
}

// Only sequences of three bytes are supported beside ASCII. END has both top bits set and so is no
// continuation.
int three_byte_character(Cursor& cursor, int lead) {
    if ((lead & 0xF0) != 0xE0) invalid_character(cursor, "not supported UTF-8 char", lead);
    const int second = cursor.curFile->get();
    if (!is_continuation(second)) invalid_character(cursor, "illegal UTF-8 second char", lead);
    const int third = cursor.curFile->get();
    if (!is_continuation(third)) invalid_character(cursor, "illegal UTF-8 third char", lead);
    ++cursor.curCol;
    return joined(lead, second, third);
}

}  // namespace

int getc_utf8(Cursor& cursor) {
    const int byte = cursor.curFile->get();
    if (byte == ByteStream::END) return LEVEL_END;
    if (byte < 0x80) return finish_ascii(cursor, byte);
    ++cursor.curCol;
    return finish_character(cursor, three_byte_character(cursor, byte));
}

}  // namespace qvox

#include "input/decoder_steps.h"
#include "text/japanese_codes.h"

namespace qvox {

namespace {

constexpr int ESC = 0x1B;

// Consumes the escape sequence behind its ESC. ESC $ @ and ESC $ B enter kanji, only ESC ( J
// leaves.
void read_escape_sequence(Cursor& cursor) {
    const int second = cursor.curFile->get();
    if (cursor.decoder.kanjiMode) {
        if (second != '(') invalid_character(cursor, "illegal second KOUT code", second);
        const int third = cursor.curFile->get();
        if (third != 'J') invalid_character(cursor, "illegal third KOUT code", third);
    } else {
        if (second != '$') invalid_character(cursor, "illegal second KIN code", second);
        const int third = cursor.curFile->get();
        if (third != '@' && third != 'B')
            invalid_character(cursor, "illegal third KIN code", third);
    }
    cursor.decoder.kanjiMode = !cursor.decoder.kanjiMode;
}

int kanji_character(Cursor& cursor, int first) {
    cursor.curCol += 2;
    const int second = cursor.curFile->get();
    if (second == ByteStream::END) return 0;  // half a character is none
    return jis_to_unicode(first << 8 | second);
}

}  // namespace

int getc_jis(Cursor& cursor) {
    int byte = cursor.curFile->get();
    while (byte == ESC) {
        read_escape_sequence(cursor);
        byte = cursor.curFile->get();
    }
    if (byte == ByteStream::END) return LEVEL_END;
    if (cursor.decoder.kanjiMode) return finish_character(cursor, kanji_character(cursor, byte));
    if (byte < 0x80) return finish_ascii(cursor, byte);
    ++cursor.curCol;
    return finish_character(cursor, jis_to_unicode(byte));
}

}  // namespace qvox

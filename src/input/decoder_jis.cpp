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

// In kanji mode every two bytes up to the next escape sequence are a character.
std::size_t get_kanji_run(Cursor& cursor, Unit* to, std::size_t room, const RunStops& stops) {
    if (stops.wide) return 0;
    const unsigned char* next = cursor.curFile->ready();
    const unsigned char* const end = cursor.curFile->readyEnd();
    std::size_t count = 0;
    for (; count < room && end - next >= 2 && *next != ESC; next += 2) {
        const int unit = jis_to_unicode(next[0] << 8 | next[1]);
        if (!is_wide_xml_char(unit)) break;
        to[count++] = static_cast<Unit>(unit);
    }
    cursor.curFile->take(next);
    cursor.curCol += 2 * static_cast<int>(count);
    return count;
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

std::size_t get_run_jis(Cursor& cursor, Unit* to, std::size_t room, const RunStops& stops) {
    if (cursor.decoder.kanjiMode) return get_kanji_run(cursor, to, room, stops);
    return get_run(cursor, to, room, stops, [](const unsigned char* bytes, std::ptrdiff_t) {
        return WideCharacter{jis_to_unicode(bytes[0]), 1, 1};
    });
}

}  // namespace qvox

#include "input/decoder_steps.h"
#include "text/japanese_codes.h"

namespace qvox {

namespace {

constexpr int ESC = 0x1B;

// Consumes the escape sequence behind its ESC. ESC $ @ and ESC $ B enter kanji, only ESC ( J
// leaves.
void read_escape_sequence() {
    const int second = curFile->get();
    if (decoderState.kanjiMode) {
        if (second != '(') invalid_character("illegal second KOUT code", second);
        const int third = curFile->get();
        if (third != 'J') invalid_character("illegal third KOUT code", third);
    } else {
        if (second != '$') invalid_character("illegal second KIN code", second);
        const int third = curFile->get();
        if (third != '@' && third != 'B') invalid_character("illegal third KIN code", third);
    }
    decoderState.kanjiMode = !decoderState.kanjiMode;
}

int kanji_character(int first) {
    curCol += 2;
    const int second = curFile->get();
    if (second == ByteStream::END) return 0;  // half a character is none
    return jis_to_unicode(first << 8 | second);
}

}  // namespace

int getc_jis() {
    int byte = curFile->get();
    while (byte == ESC) {
        read_escape_sequence();
        byte = curFile->get();
    }
    if (byte == ByteStream::END) return pop_input();
    if (decoderState.kanjiMode) return finish_character(kanji_character(byte));
    if (byte < 0x80) return finish_ascii(byte);
    ++curCol;
    return finish_character(jis_to_unicode(byte));
}

}  // namespace qvox

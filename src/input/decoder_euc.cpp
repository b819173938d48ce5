#include "input/decoder_steps.h"
#include "text/japanese_codes.h"

namespace qvox {

namespace {

constexpr int HALF_WIDTH_KANA_LEAD = 0x8E;

int pair_character(Cursor& cursor, int lead) {
    cursor.curCol += lead == HALF_WIDTH_KANA_LEAD ? 1 : 2;
    const int second = cursor.curFile->get();
    if (second == ByteStream::END) return 0;  // half a character is none
    return euc_to_unicode(lead << 8 | second);
}

}  // namespace

int getc_euc(Cursor& cursor) {
    const int byte = cursor.curFile->get();
    if (byte == ByteStream::END) return LEVEL_END;
    if (byte < 0x80) return finish_ascii(cursor, byte);
    return finish_character(cursor, pair_character(cursor, byte));
}

}  // namespace qvox

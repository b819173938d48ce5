#include "input/decoder_steps.h"
#include "text/japanese_codes.h"

namespace qvox {

namespace {

// A conversion that gave two units delivers the first and keeps the second for the next call.
int first_unit(Cursor& cursor, int units) {
    const auto value = static_cast<unsigned>(units);
    if (value <= 0xFFFF) return units;
    cursor.decoder.pendingUnitSjis = static_cast<int>(value & 0xFFFF);
    return static_cast<int>(value >> 16);
}

int non_ascii_character(Cursor& cursor, int byte) {
    ++cursor.curCol;
    if (is_half_width_kana_byte(byte)) return first_unit(cursor, sjis_to_unicode(byte));
    ++cursor.curCol;
    const int second = cursor.curFile->get();
    if (second == ByteStream::END) return 0;  // half a character is none
    return first_unit(cursor, sjis_to_unicode(byte << 8 | second));
}

}  // namespace

int getc_sjis(Cursor& cursor) {
    if (cursor.decoder.pendingUnitSjis != -1) {
        const int unit = cursor.decoder.pendingUnitSjis;
        cursor.decoder.pendingUnitSjis = -1;
        return finish_character(cursor, unit);
    }
    const int byte = cursor.curFile->get();
    if (byte == ByteStream::END) return LEVEL_END;
    if (byte < 0x80) return finish_ascii(cursor, byte);
    return finish_character(cursor, non_ascii_character(cursor, byte));
}

}  // namespace qvox

#include "input/decoder_steps.h"
#include "text/japanese_codes.h"

namespace qvox {

namespace {

constexpr bool is_half_width_kana(int byte) { return byte >= 0xA1 && byte <= 0xDF; }

// A conversion that gave two units delivers the first and keeps the second for the next call.
int first_unit(Cursor& cursor, int units) {
    const auto value = static_cast<unsigned>(units);
    if (value <= 0xFFFF) return units;
    cursor.decoder.pendingUnitSjis = static_cast<int>(value & 0xFFFF);
    return static_cast<int>(value >> 16);
}

int non_ascii_character(Cursor& cursor, int byte) {
    ++cursor.curCol;
    if (is_half_width_kana(byte)) return first_unit(cursor, sjis_to_unicode(byte));
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

std::size_t get_run_sjis(Cursor& cursor, Unit* to, std::size_t room, const RunStops& stops) {
    if (cursor.decoder.pendingUnitSjis != -1) return 0;
    return get_run(cursor, to, room, stops, [](const unsigned char* bytes, std::ptrdiff_t count) {
        if (is_half_width_kana(bytes[0])) return WideCharacter{sjis_to_unicode(bytes[0]), 1, 1};
        if (count < 2) return NO_CHARACTER;
        return WideCharacter{sjis_to_unicode(bytes[0] << 8 | bytes[1]), 2, 2};
    });
}

}  // namespace qvox

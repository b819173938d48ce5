#include "input/decoder_steps.h"
#include "text/japanese_codes.h"

namespace qvox {

namespace {

constexpr bool is_half_width_kana(int byte) { return byte >= 0xA1 && byte <= 0xDF; }

// A conversion that gave two units delivers the first and keeps the second for the next call.
int first_unit(int units) {
    const auto value = static_cast<unsigned>(units);
    if (value <= 0xFFFF) return units;
    decoderState.pendingUnitSjis = static_cast<int>(value & 0xFFFF);
    return static_cast<int>(value >> 16);
}

int non_ascii_character(int byte) {
    ++curCol;
    if (is_half_width_kana(byte)) return first_unit(sjis_to_unicode(byte));
    ++curCol;
    const int second = curFile->get();
    if (second == ByteStream::END) return 0;  // half a character is none
    return first_unit(sjis_to_unicode(byte << 8 | second));
}

}  // namespace

int getc_sjis() {
    if (decoderState.pendingUnitSjis != -1) {
        const int unit = decoderState.pendingUnitSjis;
        decoderState.pendingUnitSjis = -1;
        return finish_character(unit);
    }
    const int byte = curFile->get();
    if (byte == ByteStream::END) return pop_input();
    if (byte < 0x80) return finish_ascii(byte);
    return finish_character(non_ascii_character(byte));
}

std::size_t get_run_sjis(Unit* to, std::size_t room, const RunStops& stops) {
    if (decoderState.pendingUnitSjis != -1) return 0;
    return get_run(to, room, stops, [](const unsigned char* bytes, std::ptrdiff_t count) {
        if (is_half_width_kana(bytes[0])) return WideCharacter{sjis_to_unicode(bytes[0]), 1, 1};
        if (count < 2) return NO_CHARACTER;
        return WideCharacter{sjis_to_unicode(bytes[0] << 8 | bytes[1]), 2, 2};
    });
}

}  // namespace qvox

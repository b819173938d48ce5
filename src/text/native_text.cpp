#include "text/native_text.h"

#include "text/japanese_codes.h"

namespace qvox {

namespace {

using Converter = int (*)(int);

struct Converters {
    Converter toUnicode;
    Converter fromUnicode;
};

Converters converters_of(EncodingId encoding) {
    switch (encoding) {
        case SJIS: return {sjis_to_unicode, unicode_to_sjis};
        case EUC: return {euc_to_unicode, unicode_to_euc};
        case JIS: return {jis_to_unicode, unicode_to_jis};
        default: return {nullptr, nullptr};
    }
}

bool is_half_width_kana(int byte) { return byte >= 0xA1 && byte <= 0xDF; }

}  // namespace

Unit* native_to_wide(EncodingId encoding, const char* text, Unit* out, std::size_t* outLength) {
    const Converter toUnicode = converters_of(encoding).toUnicode;
    const bool kanaIsSingle = encoding == SJIS || encoding == JIS;
    const auto* in = reinterpret_cast<const unsigned char*>(text);
    Unit* to = out;
    while (*in != 0) {
        int code = *in++;
        if (code < 0x80 || toUnicode == nullptr) {
            if (code == '\r' && *in == '\n') code = *in++;
            *to++ = static_cast<Unit>(code);
            continue;
        }
        const bool single = (kanaIsSingle && is_half_width_kana(code)) || *in == 0;
        if (!single) code = code * 256 + *in++;
        const auto units = static_cast<unsigned>(toUnicode(code));
        if (units > 0xFFFF) *to++ = static_cast<Unit>(units >> 16);
        *to++ = static_cast<Unit>(units & 0xFFFF);
    }
    *to = 0;
    if (outLength != nullptr) *outLength = static_cast<std::size_t>(to - out);
    return out;
}

char* wide_to_native(EncodingId encoding, const Unit* text, char* out, std::size_t* outLength) {
    const Converter fromUnicode = converters_of(encoding).fromUnicode;
    char* to = out;
    for (; *text != 0; ++text) {
        if (*text < 0x80 || fromUnicode == nullptr) {
            if (*text == '\n') *to++ = '\r';
            *to++ = static_cast<char>(*text & 0xFF);
            continue;
        }
        const int code = fromUnicode(*text);
        if ((code & 0xFF00) != 0) *to++ = static_cast<char>((code >> 8) & 0xFF);
        *to++ = static_cast<char>(code & 0xFF);
    }
    *to = 0;
    if (outLength != nullptr) *outLength = static_cast<std::size_t>(to - out);
    return out;
}

}  // namespace qvox

// The converters of the GNU C library, as an independent witness for tables and arithmetic. Other
// systems' converters differ in details, so there the witness is missing.
#pragma once

#include <cstddef>
#include <string>

#ifdef __GLIBC__
#include <iconv.h>
#else
using iconv_t = void*;
inline iconv_t iconv_open(const char*, const char*) { return reinterpret_cast<iconv_t>(-1); }
inline int iconv_close(iconv_t) { return 0; }
inline std::size_t iconv(iconv_t, char**, std::size_t*, char**, std::size_t*) { return 0; }
#endif

namespace qvox_test {

// Converts one character between a byte encoding and UTF-16.
class IconvCodec {
public:
    explicit IconvCodec(const char* encoding)
        : decoder(iconv_open("UTF-16BE", encoding)), encoder(iconv_open(encoding, "UTF-16BE")) {}
    IconvCodec(const IconvCodec&) = delete;
    IconvCodec& operator=(const IconvCodec&) = delete;
    ~IconvCodec() {
        for (const iconv_t handle : {decoder, encoder}) {
            if (handle != none()) iconv_close(handle);
        }
    }

    bool is_open() const { return decoder != none() && encoder != none(); }

    // The unit of a code (a byte, or first byte * 256 + second); 0 where it isn't one character.
    int decode(int code) const {
        return code < 0x100 ? unit_of({char_of(code)}) : decode_pair(code >> 8, code & 0xFF);
    }
    int decode_pair(int first, int second) const {
        return unit_of({char_of(first), char_of(second)});
    }

    // The code of a unit; '?' where it has none.
    int encode(int unit) const {
        const std::string bytes = convert(encoder, {char_of(unit >> 8), char_of(unit)});
        return bytes.empty() ? '?' : number_of(bytes);
    }

private:
    static iconv_t none() { return reinterpret_cast<iconv_t>(-1); }

    // Empty if the input isn't a whole character, or isn't one in the other encoding.
    static std::string convert(iconv_t handle, std::string input) {
        iconv(handle, nullptr, nullptr, nullptr, nullptr);
        char output[16];
        char* in = input.data();
        char* out = output;
        std::size_t inLeft = input.size();
        std::size_t outLeft = sizeof output;
        const std::size_t result = iconv(handle, &in, &inLeft, &out, &outLeft);
        return result == static_cast<std::size_t>(-1) ? std::string() : std::string(output, out);
    }

    static char char_of(int byte) { return static_cast<char>(byte & 0xFF); }

    static int number_of(const std::string& bytes) {
        int number = 0;
        for (const char byte : bytes) number = number * 256 + static_cast<unsigned char>(byte);
        return number;
    }

    int unit_of(const std::string& code) const {
        const std::string bytes = convert(decoder, code);
        return bytes.size() == 2 ? number_of(bytes) : 0;
    }

    const iconv_t decoder;
    const iconv_t encoder;
};

}  // namespace qvox_test

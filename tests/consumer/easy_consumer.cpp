// A program like a user's, on qvox/easy.h: prints what the named document is in Shift_JIS, escaped.

#include <cstdio>

#include <qvox/easy.h>

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    for (const char byte : qvox::easy::document::load(argv[1]).bytes("Shift_JIS")) {
        const unsigned value = static_cast<unsigned char>(byte);
        std::printf(value < 0x7F ? "%c" : "\\x%02x", value);
    }
    std::printf("\n");
    return 0;
}

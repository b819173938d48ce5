// The steps that all decoders share.
#pragma once

#include "input/decoders.h"
#include "input/input_stack.h"
#include "platform/byte_stream.h"
#include "runtime/report.h"

namespace qvox {

// Raises the error of a character or byte that can't stand here: "text (value in hexadecimal)".
[[noreturn]] void invalid_character(const char* text, int value);

// Behind a CR: takes an LF that follows along. Both CR LF and a lone CR are one LF.
inline int line_feed_after_return() {
    const int next = curFile->get();
    if (next != '\n' && next != ByteStream::END) curFile->unget();
    return '\n';
}

// The last step of each decoder: refuses what isn't a character, and counts the line.
inline int finish_character(int c) {
    if (c < 0x20 ? (c != '\n' && c != '\t' && c != '\r') : !is_xml_char(c)) {
        invalid_character("not xml char", c);
    }
    if (c == '\n') {
        curCol = 0;
        ++curLine;
    }
    return c;
}

// The common path of the encodings that contain ASCII: `byte` is below 0x80.
inline int finish_ascii(int byte) {
    if (byte == '\r') byte = line_feed_after_return();
    ++curCol;
    return finish_character(byte);
}

}  // namespace qvox

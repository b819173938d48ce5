// The steps that all decoders share.
#pragma once

#include "input/decoders.h"
#include "input/xml_char.h"
#include "platform/byte_stream.h"
#include "runtime/report.h"

namespace qvox {

// Raises the error of a character or byte that can't stand here: "text (value in hexadecimal)". A
// file that can't be read any further is that error instead.
[[noreturn]] void invalid_character(const Cursor& cursor, const char* text, int value);

// Behind a CR: takes an LF that follows along. Both CR LF and a lone CR are one LF.
inline int line_feed_after_return(Cursor& cursor) {
    const int next = cursor.curFile->get();
    if (next != '\n' && next != ByteStream::END) cursor.curFile->unget();
    return '\n';
}

// The last step of each decoder: refuses what isn't a character, and counts the line.
inline int finish_character(Cursor& cursor, int c) {
    if (c < 0x20 ? (c != '\n' && c != '\t' && c != '\r') : !is_xml_char(c)) {
        invalid_character(cursor, "not xml char", c);
    }
    if (c == '\n') {
        cursor.curCol = 0;
        ++cursor.curLine;
    }
    return c;
}

// The common path of the encodings that contain ASCII: `byte` is below 0x80.
inline int finish_ascii(Cursor& cursor, int byte) {
    if (byte == '\r') byte = line_feed_after_return(cursor);
    ++cursor.curCol;
    return finish_character(cursor, byte);
}

}  // namespace qvox

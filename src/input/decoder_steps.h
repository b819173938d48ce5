// The steps that all decoders share.
#pragma once

#include <cstddef>

#include "input/decoders.h"
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

// A character from 0x80 up as a run reader finds it: its unit, its bytes and its columns. No bytes
// for one that isn't whole or isn't valid.
struct WideCharacter {
    int unit;
    int size;
    int cells;
};

inline constexpr WideCharacter NO_CHARACTER = {0, 0, 0};

inline bool is_wide_xml_char(int unit) {
    return unit >= 0x80 && unit <= 0xFFFF && is_xml_char(unit);
}

// The loop of the run readers of encodings that contain ASCII. `decode` gives the WideCharacter at
// the start of a stretch of bytes.
template <typename Decode>
std::size_t get_run(Cursor& cursor, Unit* to, std::size_t room, const RunStops& stops,
                    Decode decode) {
    const unsigned char* next = cursor.curFile->ready();
    const unsigned char* const end = cursor.curFile->readyEnd();
    Unit* const first = to;
    Unit* const limit = to + room;
    int cells = 0;
    while (to != limit && next != end) {
        if (*next < 0x80) {
            if (stops.ascii[*next]) break;
            *to++ = *next++;
            ++cells;
            continue;
        }
        if (stops.wide) break;
        const WideCharacter c = decode(next, end - next);
        if (c.size == 0 || !is_wide_xml_char(c.unit)) break;
        *to++ = static_cast<Unit>(c.unit);
        next += c.size;
        cells += c.cells;
    }
    cursor.curFile->take(next);
    cursor.curCol += cells;
    return static_cast<std::size_t>(to - first);
}

}  // namespace qvox

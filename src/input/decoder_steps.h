// The steps that all decoders share.
#pragma once

#include <cstddef>

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
std::size_t get_run(Unit* to, std::size_t room, const RunStops& stops, Decode decode) {
    const unsigned char* next = curFile->ready();
    const unsigned char* const end = curFile->readyEnd();
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
    curFile->take(next);
    curCol += cells;
    return static_cast<std::size_t>(to - first);
}

}  // namespace qvox

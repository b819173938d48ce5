// The decoders: each reads the bytes of the current file and delivers one character a call, or
// LEVEL_END. They normalise the end of line, refuse what isn't a character of XML 1.0 and count
// lines and columns.
#pragma once

#include <cstddef>

#include "input/cursor.h"
#include "text/encoding_id.h"
#include "text/wide.h"

namespace qvox {

int getc_utf8(Cursor& cursor);
int getc_utf16(Cursor& cursor);
int getc_sjis(Cursor& cursor);
int getc_euc(Cursor& cursor);
int getc_jis(Cursor& cursor);

// Which characters end a run. The controls but tab always do.
struct RunStops {
    bool ascii[0x80];
    bool wide;  // all characters from 0x80 up
};

// Store at most `room` units at `to` and return how many.
std::size_t get_run_utf8(Cursor& cursor, Unit* to, std::size_t room, const RunStops& stops);
std::size_t get_run_utf16(Cursor& cursor, Unit* to, std::size_t room, const RunStops& stops);
std::size_t get_run_sjis(Cursor& cursor, Unit* to, std::size_t room, const RunStops& stops);
std::size_t get_run_euc(Cursor& cursor, Unit* to, std::size_t room, const RunStops& stops);
std::size_t get_run_jis(Cursor& cursor, Unit* to, std::size_t room, const RunStops& stops);

// A reader: by characters, and by runs.
struct Reader {
    int (*getc)(Cursor& cursor);
    std::size_t (*getRun)(Cursor& cursor, Unit* to, std::size_t room, const RunStops& stops);
};

// The decoder of an encoding.
Reader select_getc_proc(EncodingId encoding);

// A character of XML 1.0.
inline bool is_xml_char(long long c) {
    return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) ||
           (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

}  // namespace qvox

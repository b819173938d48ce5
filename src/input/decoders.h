// The decoders: each reads the bytes of curFile and delivers one character a call. They normalise
// the end of line, refuse what isn't a character of XML 1.0 and count lines and columns. At the end
// of the file they hand over to pop_input.
#pragma once

#include <cstddef>

#include "text/encoding_id.h"
#include "text/wide.h"

namespace qvox {

// What the decoders remember between two characters. It starts afresh with each file level, and
// that of the level below comes back with it.
struct DecoderState {
    int pendingUnit16 = -1;    // getc_utf16: the unit behind a CR that isn't an LF; -1 for none
    int pendingUnitSjis = -1;  // getc_sjis: second unit of a conversion that gave two; -1 for none
    bool kanjiMode = false;    // getc_jis: between a KIN and a KOUT sequence
};

extern DecoderState decoderState;

int getc_utf8();
int getc_utf16();
int getc_sjis();
int getc_euc();
int getc_jis();

// Which characters end a run. The controls but tab always do.
struct RunStops {
    bool ascii[0x80];
    bool wide;  // all characters from 0x80 up
};

// Store at most `room` units at `to` and return how many.
std::size_t get_run_utf8(Unit* to, std::size_t room, const RunStops& stops);
std::size_t get_run_utf16(Unit* to, std::size_t room, const RunStops& stops);
std::size_t get_run_sjis(Unit* to, std::size_t room, const RunStops& stops);
std::size_t get_run_euc(Unit* to, std::size_t room, const RunStops& stops);
std::size_t get_run_jis(Unit* to, std::size_t room, const RunStops& stops);

// A reader: by characters, and by runs.
struct Reader {
    int (*getc)();
    std::size_t (*getRun)(Unit* to, std::size_t room, const RunStops& stops);
};

// The decoder of an encoding.
Reader select_getc_proc(EncodingId encoding);

// A character of XML 1.0.
inline bool is_xml_char(long long c) {
    return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) ||
           (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

}  // namespace qvox

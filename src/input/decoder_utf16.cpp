#include "input/decoder_steps.h"

namespace qvox {

namespace {

// The next unit of the file, or END.
int read_unit() {
    const int first = curFile->get();
    if (first == ByteStream::END) return ByteStream::END;
    const int second = curFile->get();
    if (second == ByteStream::END) {
        qvox_report(REPORT_ERROR, QVOXException::INVALID_CHAR_ERR,
                    "unexpected EOF at utf-16 second byte");
    }
    return byteOrder == BYTES_BIG_ENDIAN ? first << 8 | second : second << 8 | first;
}

// Behind a CR: the unit that follows goes with it if it is LF, else it waits for the next call.
int line_feed_after_return_unit() {
    const int next = read_unit();
    if (next != '\n' && next != ByteStream::END) decoderState.pendingUnit16 = next;
    return '\n';
}

}  // namespace

int getc_utf16() {
    int unit = decoderState.pendingUnit16;
    if (unit != -1) {
        decoderState.pendingUnit16 = -1;  // its columns aren't counted
    } else {
        unit = read_unit();
        if (unit == ByteStream::END) return pop_input();
        curCol += unit > 0xFF ? 2 : 1;
    }
    if (unit == '\r') unit = line_feed_after_return_unit();
    return finish_character(unit);
}

std::size_t get_run_utf16(Unit* to, std::size_t room, const RunStops& stops) {
    if (decoderState.pendingUnit16 != -1) return 0;
    const int high = byteOrder == BYTES_BIG_ENDIAN ? 0 : 1;
    const unsigned char* next = curFile->ready();
    const unsigned char* const end = curFile->readyEnd();
    Unit* const first = to;
    Unit* const limit = to + room;
    int cells = 0;
    for (; to != limit && end - next >= 2; next += 2) {
        const int unit = next[high] << 8 | next[1 - high];
        const bool stop = unit < 0x80 ? stops.ascii[unit] : stops.wide || !is_wide_xml_char(unit);
        if (stop) break;
        *to++ = static_cast<Unit>(unit);
        cells += unit > 0xFF ? 2 : 1;
    }
    curFile->take(next);
    curCol += cells;
    return static_cast<std::size_t>(to - first);
}

}  // namespace qvox

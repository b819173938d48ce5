#include "input/decoder_steps.h"
#include "input/file_end.h"

namespace qvox {

namespace {

// The next unit of the file, or END.
int read_unit(Cursor& cursor) {
    const int first = cursor.curFile->get();
    if (first == ByteStream::END) return ByteStream::END;
    const int second = cursor.curFile->get();
    if (second == ByteStream::END) {
        check_end_of_file(*cursor.curFile);
        qvox_report(REPORT_ERROR, QVOXException::INVALID_CHAR_ERR,
                    "unexpected EOF at utf-16 second byte");
    }
    return cursor.byteOrder == BYTES_BIG_ENDIAN ? first << 8 | second : second << 8 | first;
}

// Behind a CR: the unit that follows goes with it if it is LF, else it waits for the next call.
int line_feed_after_return_unit(Cursor& cursor) {
    const int next = read_unit(cursor);
    if (next != '\n' && next != ByteStream::END) cursor.decoder.pendingUnit16 = next;
    return '\n';
}

}  // namespace

int getc_utf16(Cursor& cursor) {
    int unit = cursor.decoder.pendingUnit16;
    if (unit != -1) {
        cursor.decoder.pendingUnit16 = -1;  // its columns aren't counted
    } else {
        unit = read_unit(cursor);
        if (unit == ByteStream::END) return LEVEL_END;
        cursor.curCol += unit > 0xFF ? 2 : 1;
    }
    if (unit == '\r') unit = line_feed_after_return_unit(cursor);
    return finish_character(cursor, unit);
}

}  // namespace qvox

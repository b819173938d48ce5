#include "input/decoders.h"

#include <cstdlib>

#include "input/decoder_steps.h"
#include "input/file_end.h"

namespace qvox {

Decoder select_getc_proc(EncodingId encoding) {
    switch (encoding) {
        case UTF8: return getc_utf8;
        case UTF16: return getc_utf16;
        case SJIS: return getc_sjis;
        case EUC: return getc_euc;
        case JIS: return getc_jis;
    }
    qvox_report(REPORT_FATAL, QVOXException::INTERNAL_ERR, "(*select_getc_proc())() fail");
    return nullptr;
}

void invalid_character(const Cursor& cursor, const char* text, int value) {
    check_end_of_file(*cursor.curFile);
    qvox_report(REPORT_ERROR, QVOXException::INVALID_CHAR_ERR, "%s (%x)", text,
                static_cast<unsigned>(value));
    std::abort();  // an error report always throws
}

}  // namespace qvox

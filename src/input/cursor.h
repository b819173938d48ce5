// Where the reader of the top level stands: what the decoders read from, what they remember, and
// the place that messages show.
#pragma once

#include "input/byte_order.h"
#include "input/expansion.h"
#include "platform/byte_stream.h"
#include "text/wide.h"

namespace qvox {

// What the decoders remember between two characters. It starts afresh with each file level, and
// that of the level below comes back with it.
struct DecoderState {
    int pendingUnit16 = -1;    // getc_utf16: the unit behind a CR that isn't an LF; -1 for none
    int pendingUnitSjis = -1;  // getc_sjis: second unit of a conversion that gave two; -1 for none
    bool kanjiMode = false;    // getc_jis: between a KIN and a KOUT sequence

    bool has_pending_unit() const { return pendingUnit16 != -1 || pendingUnitSjis != -1; }
};

struct Cursor {
    explicit Cursor(Expansion& expansionOfParse) : expansion(expansionOfParse) {}

    Expansion& expansion;           // replacement text is counted here
    ByteStream* curFile = nullptr;  // file of the nearest file level
    ByteOrder byteOrder = NO_BYTE_ORDER;
    DecoderState decoder;
    const Unit* text = nullptr;  // the units to be read of a level that is a text; a NUL ends them
    int curLine = 0;             // from 1 in each file and memory level
    int curCol = 0;              // in display cells; stands before the first character at 1
    int tokenCol = 0;            // curCol when the current token began
};

// What a reader returns where its source is exhausted. (-1 is the end of the whole input.)
inline constexpr int LEVEL_END = -2;

}  // namespace qvox

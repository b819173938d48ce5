// The decoders: each reads the bytes of the current file and delivers one character a call, or
// LEVEL_END. They normalise the end of line, refuse what isn't a character of XML 1.0 and count
// lines and columns.
#pragma once

#include "input/cursor.h"
#include "text/encoding_id.h"

namespace qvox {

int getc_utf8(Cursor& cursor);
int getc_utf16(Cursor& cursor);
int getc_sjis(Cursor& cursor);
int getc_euc(Cursor& cursor);
int getc_jis(Cursor& cursor);

// A decoder.
using Decoder = int (*)(Cursor& cursor);

// That of an encoding.
Decoder select_getc_proc(EncodingId encoding);

}  // namespace qvox

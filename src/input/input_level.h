// One level of the input: the document at the bottom, above it the external subset, replacement
// texts and external entities while they are read.
#pragma once

#include <memory>
#include <string>

#include "input/cursor.h"
#include "input/window.h"
#include "platform/byte_stream.h"
#include "text/encoding_id.h"
#include "text/wide.h"

namespace qvox {

enum InputKind : int {
    INPUT_DOCUMENT = 0,         // the document's file
    INPUT_EXTERNAL_SUBSET = 1,  // the file of the external subset
    INPUT_ENTITY_TEXT = 2,      // replacement text of an internal entity
    INPUT_EXTERNAL_ENTITY = 3,  // the file of an external entity
    INPUT_MEMORY = 4            // the document as the caller's string
};

struct InputLevel {
    InputKind kind = INPUT_DOCUMENT;
    const Unit* name = nullptr;           // the entity's name, with a leading "%" for a parameter
                                          // entity; null for the other kinds
    ByteStream* file = nullptr;           // the file of a file level
    std::unique_ptr<ByteStream> owned;    // that file again, where the level has to close it
    EncodingId encoding = UTF8;           // of a file level; a declaration changes it
    ByteOrder byteOrder = NO_BYTE_ORDER;  // of a file level
    bool isRepeated = false;              // an external entity that was read before in this parse

    // What waits here while another level lies on this one.
    Window window;                    // with what was decoded ahead
    const Unit* savedText = nullptr;  // read position of a text, behind what was decoded ahead
    int savedLine = 0;                // curLine, but for a replacement text
    bool hasHeldChar = false;         // a character that comes first when the level goes on
    int heldChar = -1;

    // What the level below takes back when this file level ends.
    ByteStream* fileBelow = nullptr;
    DecoderState decoderBelow;
};

}  // namespace qvox

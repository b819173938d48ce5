// Cuts a document that the library has written into pieces of markup and text.
#pragma once

#include <functional>

#include "units.h"

struct Piece {
    enum Kind {
        START_TAG,
        EMPTY_TAG,
        END_TAG,
        TEXT,  // between two pieces of markup, references included
        DOCTYPE_START,
        DECLARATION,
        DOCTYPE_END,
        OTHER,  // a comment, a processing instruction, a CDATA section
    };

    Kind kind;
    UnitView text;
};

class MarkupCutter {
public:
    // The text must outlive the pieces. It has double quotes only around values, and no `<` or `>`
    // in text and in the values of attributes.
    explicit MarkupCutter(UnitView document) : rest(document) {}

    // The next piece, until there is none. One that doesn't end is the rest of the document.
    bool next(Piece& piece);

private:
    UnitView rest;
};

// Calls `action(part, isValue)` for the parts of a piece in their order. A value is text, or what
// stands in the quotes of an attribute, an entity or a default: there references may stand.
void for_each_part(const Piece& piece, const std::function<void(UnitView, bool)>& action);

// Cuts a document that the library has written into pieces of markup and text.
#pragma once

#include <cstddef>
#include <map>
#include <string_view>
#include <vector>

#include "literals.h"
#include "units.h"

struct Part {
    enum Kind {
        MARKUP,
        TEXT,  // as it is written, with references
        ATTRIBUTE_VALUE,
        ENTITY_VALUE,
        DEFAULT_VALUE,
        IDENTIFIER,
    };

    Kind kind;
    UnitView text;  // without the quotes around a value or an identifier
};

struct Piece {
    enum Kind {
        START_TAG,
        EMPTY_TAG,
        END_TAG,
        TEXT,  // between two pieces of markup
        DOCTYPE_START,
        DECLARATION,
        DOCTYPE_END,
        OTHER,  // a comment, a processing instruction, a CDATA section
    };

    Kind kind;
    UnitView text;
    std::vector<Part> parts;  // in their order
};

class MarkupCutter {
public:
    // The text must outlive the pieces, and the literals the cutter. In start tags the text has
    // double quotes only around values, and no `<` or `>` in text and in the values of attributes.
    // A literal that isn't in its place in the list ends at the next double quote.
    MarkupCutter(UnitView document, const Literals& declaredLiterals)
        : rest(document), literals(declaredLiterals) {}

    // The next piece, until there is none. One that doesn't end is the rest of the document. In an
    // attribute-list declaration the definitions of the earlier ones for the element, which the
    // library repeats, are no parts.
    bool next(Piece& piece);

private:
    std::size_t cut(Piece& piece, std::size_t start, std::string_view end);
    std::size_t lengthOfLiteral(Piece::Kind kind, UnitView text);
    void leaveOutRepeated(Piece& piece);

    UnitView rest;
    const Literals& literals;
    std::size_t nextLiteral = 0;
    std::map<UnitView, UnitView> definitions;  // by the name of the element
};

// Units of a piece, up to `end`.
struct Place {
    std::size_t start;
    std::size_t end;
};

Place place_of(const Part& part, const Piece& piece);

// Makes the units no part of the piece. They must begin and end outside quotes.
void leave_out(Piece& piece, const Place& units);

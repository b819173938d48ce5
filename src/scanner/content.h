// The straight way through the content of elements: it reads the window's units by whole pieces, a
// start tag, an end tag, a text, a comment, and tells each as soon as it is recognised. What isn't
// recognised whole, for the end of the window, for an entity with markup in it, for anything that
// may be an error, is left as it is, and the lexer and the grammar take the piece from its start:
// every error and every message is theirs.
//
// Both work on the same open elements. What the grammar has to know of the straight way are two
// tokens: ELEMENT_OPENED for an element that was opened here and isn't closed yet, and
// ELEMENT_CLOSED for one that the grammar knows of and that was closed here.
//
// A piece is taken only with the unit behind it in the window, since events are raised when that
// character is in hand.
#pragma once

#include <vector>

#include "input/input.h"
#include "scanner/document_actions.h"
#include "scanner/events.h"
#include "scanner/lexer.h"
#include "scanner/names.h"
#include "scanner/plain_entities.h"
#include "scanner/token_buffer.h"

namespace qvox {

class Content {
public:
    // Without `byPieces` nothing is ever taken.
    Content(Heap& heap, Input& inputOfParse, Names& namesOfParse, Elements& elementsOfParse,
            Lexer& lexerOfParse, Events& eventsOfParse, bool byPieces);
    Content(const Content&) = delete;
    Content& operator=(const Content&) = delete;

    // Takes all pieces that can be taken. Returns the token that the grammar has to be told, or
    // NOTHING where the lexer has the next one.
    int read();

    static constexpr int NOTHING = 0;

private:
    enum Outcome {
        TAKEN,
        CLOSED,      // an element that the grammar knows of
        UNUSUAL,     // not for the straight way
        INCOMPLETE,  // the window ends within the piece
    };

    // A reference to an entity within a piece.
    struct Reference {
        const Unit* token;  // behind the first character of its token
        Unit* behind;
        const PlainEntity* entity;
    };

    bool is_in_reach() const;
    int hand_over();
    Outcome read_piece();
    Outcome unrecognised(const Unit* place) const;
    void take(const Unit* token, Unit* behindPiece);
    EventText text_between(const Unit* text, const Unit* end) const;

    Outcome read_markup(Unit* piece);
    Outcome read_end_tag(Unit* piece);
    Outcome read_comment(Unit* piece);
    Outcome read_cdata(Unit* piece);
    Outcome read_pi(Unit* piece);

    Outcome read_start_tag(Unit* piece);
    Name& name_at(Unit* place, Unit** behind);
    Unit* read_attributes(Unit* place, Unit** failed);
    Unit* read_attribute(Unit* place, Unit** failed);
    Unit* read_changed_value(Name& name, Unit* value, Unit quote, Unit** failed);
    Outcome open_tag(Name& name, Unit* close);

    Outcome read_text(Unit* piece);
    Outcome read_text_with_references(Unit* piece, Unit* reference);
    Outcome tell_text(Unit* close, const EventText& text);

    void begin_references();
    Unit* read_reference(Unit* reference, const Unit* token, Unit quote, Unit** failed);
    Unit* read_character_reference(Unit* digits, Unit** failed);
    Unit* read_entity_reference(Unit* name, const Unit* token, Unit quote, Unit** failed);
    void append(const Unit* from, const Unit* to);
    void tell_references(const Unit* token);

    Input& input;
    Names& names;
    Elements& elements;
    Lexer& lexer;
    Events& events;
    PlainEntities entities;

    bool isOn;
    bool hasDeclined = false;         // the lexer has the next token
    std::size_t unknownElements = 0;  // open ones that lexer and grammar don't know of
    std::size_t searched = 0;         // units of the piece in which no end of the text was found
    Name* lastName;                   // of an element or attribute
    TokenBuffer gathered;             // a text with its references replaced
    std::vector<Reference> references;
    Amount expandedUnits = 0;  // of the texts that they stand for
};

}  // namespace qvox

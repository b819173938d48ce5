// The values that flow along the grammar's stack, each one pointer: strings of tokens, pieces of a
// joined text, and small records. All of them live on the parse heap.
#pragma once

#include <initializer_list>

#include "runtime/heap.h"
#include "text/wide.h"

namespace qvox {

// A text made of parts, for content models and enumerations: joining two of them copies nothing, so
// that a model costs no more than its length, however it is nested. Null for an empty text.
struct Pieces {
    struct Piece {
        const Unit* text;
        Piece* next;
    };
    Piece* first;
    Piece* last;
};

struct ExternalId {
    const Unit* publicId;  // or null
    const Unit* systemId;
};

struct DefaultDecl {
    const Unit* mode;   // "#REQUIRED", "#IMPLIED", "#FIXED" or null
    const Unit* value;  // or null
};

// A parameter entity has a value or identifiers.
struct ParameterEntityDef {
    const Unit* value;           // or null
    const ExternalId* external;  // null with a value
};

class GrammarValues {
public:
    explicit GrammarValues(Heap& parseHeap) : heap(parseHeap) {}

    // What a joined text can be made of: pieces, which are used up by it, the text of a token, or
    // an ASCII character.
    struct Part {
        Part(Pieces* joined) : pieces(joined) {}
        Part(const Unit* tokenText) : text(tokenText) {}
        Part(char asciiSymbol) : symbol(asciiSymbol) {}

        Pieces* pieces = nullptr;
        const Unit* text = nullptr;
        char symbol = 0;
    };

    // The parts in order.
    Pieces* join(std::initializer_list<Part> parts);
    // The whole text in one string.
    Unit* flatten(const Pieces* pieces);

    const ExternalId* external_id(const Unit* publicId, const Unit* systemId);
    const DefaultDecl* default_decl(const Unit* mode, const Unit* value);
    const ParameterEntityDef* parameter_entity_def(const Unit* value, const ExternalId* external);

private:
    Pieces* pieces_of(const Part& part);
    Pieces* piece(const Unit* text);

    Heap& heap;
};

}  // namespace qvox

// The values that flow along the grammar's stack, each one pointer: strings of tokens, pieces of a
// joined text, and small records. All of them live on the parse heap.
#pragma once

#include <initializer_list>

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

Pieces* piece(const Unit* text);
// The text of one ASCII character.
Pieces* piece(char symbol);
// The texts in order, which are used up by this.
Pieces* join(std::initializer_list<Pieces*> parts);
// The whole text in one string.
Unit* flatten(const Pieces* pieces);

// The texts in order in one string.
Unit* concat_strings(std::initializer_list<const Unit*> texts);

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

const ExternalId* external_id(const Unit* publicId, const Unit* systemId);
const DefaultDecl* default_decl(const Unit* mode, const Unit* value);
const ParameterEntityDef* parameter_entity_def(const Unit* value, const ExternalId* external);

}  // namespace qvox

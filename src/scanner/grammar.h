// The parser of the token stream: an LALR(1) automaton made from grammar.y, and its actions.
#pragma once

#include "runtime/heap.h"
#include "scanner/content.h"
#include "scanner/document_actions.h"
#include "scanner/dtd_actions.h"
#include "scanner/events.h"
#include "scanner/grammar_values.h"
#include "scanner/lexer.h"

namespace qvox {

class Grammar {
public:
    Grammar(Heap& parseHeap, Declarations& declarations, Elements& elementsOfParse,
            Lexer& lexerOfParse, Content& contentOfParse, Events& eventsOfParse)
        : heap(parseHeap),
          dtd(declarations),
          elements(elementsOfParse),
          lexer(lexerOfParse),
          content(contentOfParse),
          events(eventsOfParse),
          values(parseHeap) {}

    // Runs over the tokens of the input that is open and raises the events, up to the end of an
    // accepted document. A token that can't stand where it stands, and too deep a nesting, are
    // errors.
    void grammar_run();

    // Actions of more than one step.
    void declare_element(Name& name, const Unit* model);
    void declare_internal_entity(const Unit* name, const Unit* value);
    void declare_external_entity(const Unit* name, const ExternalId& id, const Unit* notation);
    void declare_parameter_entity(const Unit* bareName, const ParameterEntityDef& definition);

    // What the rules work with.
    Heap& heap;
    Declarations& dtd;
    Elements& elements;
    Lexer& lexer;
    Content& content;
    Events& events;
    GrammarValues values;
};

}  // namespace qvox

// The parser of the token stream: an LALR(1) automaton made from grammar.y.
#pragma once

namespace qvox {

// Runs over the tokens of the input that is open and raises the events. Returns 0 when the document
// was accepted; a token that can't stand where it stands, and too deep a nesting, are errors.
int grammar_run();

}  // namespace qvox

// Words that the lexer knows, in tables.
#pragma once

#include <cstddef>

#include "scanner/state_stack.h"
#include "text/wide.h"

namespace qvox {

// A word and what it means to the lexer: its token, and the sub-state that it leads to, if any.
struct Keyword {
    const char* word;
    int token;
    SubState next = NO_SUB_STATE;
};

// The word of a markup declaration: its token, and the main state in which it is scanned.
struct DeclarationWord {
    const char* word;
    int token;
    MainState state;
};

// The row of `table` with the word `text`, or null.
template <typename Row, std::size_t count>
const Row* find_word(const Row (&table)[count], const Unit* text) {
    for (const Row& row : table) {
        if (wide_narrow_compare(text, row.word) == 0) return &row;
    }
    return nullptr;
}

}  // namespace qvox

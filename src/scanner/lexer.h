// The lexer: turns the characters of curGetc into the grammar's tokens. What a character means is
// decided by a stack of states that the lexer alone drives; here is what its states share.
#pragma once

#include "input/input_stack.h"
#include "scanner/run_stops.h"
#include "scanner/state_stack.h"
#include "scanner/token.h"
#include "scanner/token_buffer.h"
#include "text/char_classes.h"

namespace qvox {

// The lexer's to write; the grammar reads tokenValue.
extern Unit* tokenValue;  // value of the token just returned, on the parse heap

// Ready for the first token of a document, outside the root element.
void lexer_start();

// Releases the lexer's buffers. With `accepted`, states that are left over give a warning.
void lexer_end(bool accepted);

// The next token, 0 at the end of input. Sets tokenValue for a token that has a value.
int next_token();

// What a state returns to have the call start again with curChar as its first character.
inline constexpr int START_AGAIN = -1;

inline void read_char() { curChar = curGetc(); }

// Takes the character in hand as the whole token.
inline int single_character() {
    const int token = curChar;
    read_char();
    return token;
}

// curChar is in the token already: appends the characters that can continue a name, and leaves the
// first other one in hand.
void scan_name();

// Each makes the semantic value of the token out of its text.
void token_copy();  // a copy on the parse heap
void token_lend();  // the text itself, valid until the next token is scanned

// The token that the next call returns, with its value.
void set_pending(int token, Unit* value);

// Whether white space was returned directly before the token in hand.
bool token_follows_space();

// A word and what it means to the lexer: its token, and the sub-state it leads to or 0.
struct Keyword {
    const char* word;
    int token;
    int sub;
};

// The row of `table` with the word that the token buffer holds from `offset` on, or null.
const Keyword* find_keyword(const Keyword* begin, const Keyword* end, std::size_t offset);

template <std::size_t count>
const Keyword* find_keyword(const Keyword (&table)[count], std::size_t offset = 0) {
    return find_keyword(table, table + count, offset);
}

// Scans a name that must be a word of the table: its token, with its sub-state pushed, or NO_TOKEN.
template <std::size_t count>
int scan_keyword(const Keyword (&table)[count]) {
    scan_name();
    const Keyword* keyword = find_keyword(table);
    if (keyword == nullptr) return NO_TOKEN;
    if (keyword->sub != 0) push_sub(static_cast<SubState>(keyword->sub));
    return keyword->token;
}

// A name, or what it opens: NAME with the name as its value.
int scan_name_token();

// A quoted literal with curChar as its quote: `token`, with the text as its value.
int scan_literal(int token);

// The logic of the main states, one function each. The first character is in hand and, but for a
// reference, in the token.
int scan_document();
int scan_content();
int scan_comment();
int scan_xml_decl();
int scan_pi();
int scan_start_tag();
int scan_end_tag();
int scan_cdata();
int scan_cond_section();
int scan_include_body();
int scan_doctype();
int scan_element_decl();
int scan_attlist_decl();
int scan_entity_decl();
int scan_notation_decl();

// Markup that more than one state knows. The characters up to curChar are in the token.
int scan_comment_start();  // behind "<!-"
int scan_pi_start();       // behind "<?"

inline bool is_quote(int c) { return c == '"' || c == '\''; }

}  // namespace qvox

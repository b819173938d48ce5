// The lexer: turns the characters of the input into the grammar's tokens. What a character means is
// decided by a stack of states that the lexer alone drives. Its states are in two rooms of their
// own: lexer_document for the document proper, lexer_dtd for the declarations.
#pragma once

#include "input/input.h"
#include "runtime/heap.h"
#include "scanner/document_actions.h"
#include "scanner/dtd_actions.h"
#include "scanner/keywords.h"
#include "scanner/literals.h"
#include "scanner/names.h"
#include "scanner/references.h"
#include "scanner/run_stops.h"
#include "scanner/scanner_error.h"
#include "scanner/state_stack.h"
#include "scanner/token.h"
#include "scanner/token_buffer.h"
#include "scanner/token_value.h"

namespace qvox {

class Lexer {
public:
    // Ready for the first token of a document, outside the root element. While `externalFiles` is
    // false, no file but the document is opened.
    Lexer(Heap& heap, Input& input, Names& names, Declarations& declarations, Elements& elements,
          bool externalFiles);
    Lexer(const Lexer&) = delete;
    Lexer& operator=(const Lexer&) = delete;

    // The next token, 0 at the end of input. Sets tokenValue for a token that has a value.
    int next_token();

    // Value of the token just returned. Names last as long as the parse, an attribute's value
    // until the next start tag begins, the text of content, comments, CDATA sections and processing
    // instructions until the next token is scanned.
    TokenValue tokenValue = {nullptr};

    // Whether the next token is one of an element's content; and an element that isn't read by
    // tokens begins or ends there.
    bool is_in_content() const { return pending.token == 0 && states.main_state() == LEX_CONTENT; }
    void enter_element() { states.push_frame(LEX_CONTENT); }
    void leave_element() { states.pop_frame(); }

    // The text of the token in hand.
    const TokenBuffer& text_in_hand() const { return token; }

    // Opens the external subset behind its document type declaration, if there is one to be had.
    void load_external_subset(const Unit* systemId);

    // The external subset begins or has ended, the latter in the middle of a call of next_token.
    void subset_level_started();
    void subset_level_ended();

    // An accepted document has been read: states that are left over give a warning.
    void end() const;

    const ScannerErrors& scanner_errors() const { return errors; }

private:
    // A token that the next call returns.
    struct PendingToken {
        int token;  // 0 for none
        const Unit* text;
    };

    // What a state returns to have the call start again with curChar as its first character.
    static constexpr int START_AGAIN = -1;

    // The steps of a call.
    int take_pending();
    void set_pending(int tokenNumber, const Unit* text);
    int scan_token();
    int scan_space();
    bool space_is_text(int main) const;
    bool is_plain_text(int main) const;
    bool starts_reference(int main) const;

    // What the states share.
    int curChar() const { return input.curChar; }
    void read_char() { input.read_char(); }
    int read_markup();
    int single_character();
    int open_frame(int tokenNumber, MainState main);
    int close_frame(int tokenNumber);
    void scan_name();
    int scan_name_token();
    int scan_literal(int tokenNumber);
    void token_copy();
    void token_lend();
    template <std::size_t count>
    int scan_keyword(const Keyword (&table)[count]);

    // Markup that more than one state knows. The characters up to curChar are in the token.
    int scan_comment_start();
    int scan_pi_start();

    // The main states. The first character is in hand and, but for a reference, in the token.
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

    // Steps of the document's states.
    int scan_markup();
    int scan_declaration_start();
    int scan_section_start();
    int enter_text(int tokenNumber, MainState main);
    int scan_character_data();
    int next_in_run(const RunStops& stops);
    int read_one(const char* unterminated);
    int read_text(const char* unterminated);
    int read_comment();
    int close_text(int tokenNumber, int closingToken, std::size_t delimiterLength);
    int scan_attribute_value();
    int scan_pi_target();
    int scan_pi_data();
    int scan_xml_decl_value();
    bool token_word_is(std::size_t offset, const char* word);

    // Steps of the declarations' states.
    int scan_parameter_reference();
    int scan_declared_name(SubState next);
    template <std::size_t count>
    int scan_keyword_or_name(const Keyword (&table)[count]);
    template <std::size_t count>
    int scan_sign_keyword(const Keyword (&table)[count]);
    int scan_last_literal(int tokenNumber);
    int scan_literal_before(SubState next);
    int scan_doctype_external();
    int scan_subset();
    int scan_subset_declaration();
    int scan_element_body();
    int scan_attlist_body();
    int scan_list_symbol();
    int scan_notation_list();
    int scan_enumeration();
    int scan_entity_start();
    int scan_entity_body();
    int scan_notation_name();
    int scan_notation_body();
    int scan_notation_literal(bool isPublic);
    int scan_ignored_text();

    Heap& heap;
    Input& input;
    Names& names;
    Elements& elements;

    TokenBuffer token;
    StateStack states;
    ScannerErrors errors;
    References references;
    Literals literals;

    PendingToken pending = {0, nullptr};
    // The end of an external subset that was met while another token was pending: it comes out
    // behind that one.
    bool subsetEndWaits = false;
    int previousToken = 0;  // the last one that was scanned, pending ones not counted
};

// Scans a name that must be a word of the table: its token, with its sub-state pushed, or NO_TOKEN.
template <std::size_t count>
int Lexer::scan_keyword(const Keyword (&table)[count]) {
    scan_name();
    const Keyword* keyword = find_word(table, token.text());
    if (keyword == nullptr) return NO_TOKEN;
    if (keyword->next != NO_SUB_STATE) states.push_sub(keyword->next);
    return keyword->token;
}

inline bool is_quote(int c) { return c == '"' || c == '\''; }

}  // namespace qvox

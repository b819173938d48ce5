// The lexer's states of the document type declaration and of the declarations inside it.
#include "scanner/lexer.h"
#include "text/char_classes.h"

namespace qvox {

namespace {

constexpr std::size_t WORD_BEHIND_BANG = 2;  // "<!"
constexpr std::size_t WORD_BEHIND_SIGN = 1;  // "#"

constexpr DeclarationWord DECLARATION_WORDS[] = {
    {"ELEMENT", ELEMENT_DECL_START, LEX_ELEMENT_DECL},
    {"ATTLIST", ATTLIST_DECL_START, LEX_ATTLIST_DECL},
    {"ENTITY", ENTITY_DECL_START, LEX_ENTITY_DECL},
    {"NOTATION", NOTATION_DECL_START, LEX_NOTATION_DECL},
};
constexpr Keyword DOCTYPE_WORDS[] = {
    {"SYSTEM", KW_SYSTEM, SUB_DOCTYPE_SYSTEM},
    {"PUBLIC", KW_PUBLIC, SUB_DOCTYPE_PUBLIC},
};
constexpr Keyword ELEMENT_WORDS[] = {
    {"EMPTY", KW_EMPTY},
    {"ANY", KW_ANY},
};
constexpr Keyword ELEMENT_SIGN_WORDS[] = {
    {"PCDATA", KW_PCDATA},
};
constexpr Keyword ATTLIST_WORDS[] = {
    {"CDATA", KW_CDATA},
    {"ID", KW_ID},
    {"IDREF", KW_IDREF},
    {"IDREFS", KW_IDREFS},
    {"ENTITY", KW_ENTITY},
    {"ENTITIES", KW_ENTITIES},
    {"NMTOKEN", KW_NMTOKEN},
    {"NMTOKENS", KW_NMTOKENS},
    {"NOTATION", KW_NOTATION, SUB_ATT_NOTATION},
};
constexpr Keyword ATTLIST_SIGN_WORDS[] = {
    {"REQUIRED", KW_REQUIRED},
    {"IMPLIED", KW_IMPLIED},
    {"FIXED", KW_FIXED},
};
constexpr Keyword ENTITY_WORDS[] = {
    {"SYSTEM", KW_SYSTEM, SUB_ENTITY_SYSTEM},
    {"PUBLIC", KW_PUBLIC, SUB_ENTITY_PUBLIC},
    {"NDATA", KW_NDATA, SUB_ENTITY_NDATA},
};
constexpr Keyword NOTATION_WORDS[] = {
    {"SYSTEM", KW_SYSTEM, SUB_NOTATION_SYSTEM},
    {"PUBLIC", KW_PUBLIC, SUB_NOTATION_PUBLIC},
};
constexpr Keyword SECTION_WORDS[] = {
    {"INCLUDE", KW_INCLUDE, SUB_INCLUDE_OPEN},
    {"IGNORE", KW_IGNORE, SUB_IGNORE_OPEN},
};

}  // namespace

// A parameter reference between two tokens: the entity's text is scanned in the same state. The end
// of input behind it is the end of input of the call.
int Lexer::scan_parameter_reference() {
    input.curChar = references.read_reference('%', nullptr);
    return START_AGAIN;
}

// The name behind the declaration's word, and the sub-state that follows it.
int Lexer::scan_declared_name(SubState next) {
    if (!is_name_start(curChar())) return NO_TOKEN;
    const int scanned = scan_name_token();
    states.push_sub(next);
    return scanned;
}

// A word that may be a keyword and is a name otherwise. The value is its text in both cases.
template <std::size_t count>
int Lexer::scan_keyword_or_name(const Keyword (&table)[count]) {
    scan_name_token();
    const Keyword* keyword = find_word(table, token.text());
    if (keyword == nullptr) return NAME;
    tokenValue.text = tokenValue.name->units();
    if (keyword->next != NO_SUB_STATE) states.push_sub(keyword->next);
    return keyword->token;
}

// '#' and a word of the table. The value is the text with its sign.
template <std::size_t count>
int Lexer::scan_sign_keyword(const Keyword (&table)[count]) {
    if (!is_name_start(read_markup())) return NO_TOKEN;
    scan_name();
    token_copy();
    const Keyword* keyword = find_word(table, token.text() + WORD_BEHIND_SIGN);
    return keyword != nullptr ? keyword->token : int{NO_TOKEN};
}

// A literal that ends its sub-state, or leads to the sub-state `next`.
int Lexer::scan_last_literal(int tokenNumber) {
    if (!is_quote(curChar())) return NO_TOKEN;
    states.pop_sub();
    return scan_literal(tokenNumber);
}

int Lexer::scan_literal_before(SubState next) {
    if (!is_quote(curChar())) return NO_TOKEN;
    states.set_sub(next);
    return scan_literal(PUBID_LITERAL);
}

int Lexer::scan_doctype_external() {
    if (is_name_start(curChar())) return scan_keyword(DOCTYPE_WORDS);
    if (curChar() == '>') return close_frame(TAG_CLOSE);
    if (curChar() != '[') return NO_TOKEN;
    states.push_sub(SUB_DTD_BODY);
    return single_character();
}

// Behind "<!" in a subset.
int Lexer::scan_subset_declaration() {
    const int c = read_markup();
    if (c == '-') return scan_comment_start();
    if (!is_name_start(c)) return NO_TOKEN;
    scan_name();
    const DeclarationWord* declaration =
        find_word(DECLARATION_WORDS, token.text() + WORD_BEHIND_BANG);
    if (declaration == nullptr) return NO_TOKEN;
    return open_frame(declaration->token, declaration->state);
}

// Between the declarations of a subset.
int Lexer::scan_subset() {
    if (curChar() == ']') {
        states.pop_sub();
        return single_character();
    }
    if (curChar() != '<') return NO_TOKEN;
    const int c = read_markup();
    if (c == '!') return scan_subset_declaration();
    return c == '?' ? scan_pi_start() : int{NO_TOKEN};
}

int Lexer::scan_element_body() {
    if (is_name_start(curChar())) return scan_keyword_or_name(ELEMENT_WORDS);
    switch (curChar()) {
        case '#': return scan_sign_keyword(ELEMENT_SIGN_WORDS);
        case '(':
        case ')':
        case '?':
        case '*':
        case '+':
        case '|':
        case ',': return single_character();
        case '>': return close_frame(TAG_CLOSE);
        case '%': return scan_parameter_reference();
        default: return NO_TOKEN;
    }
}

int Lexer::scan_attlist_body() {
    if (is_name_start(curChar())) return scan_keyword_or_name(ATTLIST_WORDS);
    if (is_quote(curChar())) return scan_literal(ATT_VALUE);
    switch (curChar()) {
        case '#': return scan_sign_keyword(ATTLIST_SIGN_WORDS);
        case '(': states.push_sub(SUB_ATT_ENUM); return single_character();
        case '>': return close_frame(TAG_CLOSE);
        case '%': return scan_parameter_reference();
        default: return NO_TOKEN;
    }
}

// What an enumeration and a list of notations share.
int Lexer::scan_list_symbol() {
    switch (curChar()) {
        case '|': return single_character();
        case ')': states.pop_sub(); return single_character();
        case '%': return scan_parameter_reference();
        default: return NO_TOKEN;
    }
}

int Lexer::scan_notation_list() {
    if (is_name_start(curChar())) return scan_name_token();
    return curChar() == '(' ? single_character() : scan_list_symbol();
}

int Lexer::scan_enumeration() {
    if (!is_name_char(curChar())) return scan_list_symbol();
    scan_name();
    token_copy();
    return NMTOKEN;
}

int Lexer::scan_entity_start() {
    return curChar() == '%' ? single_character() : scan_declared_name(SUB_ENTITY_BODY);
}

int Lexer::scan_entity_body() {
    if (is_quote(curChar())) return scan_literal(ENTITY_VALUE);
    if (is_name_start(curChar())) return scan_keyword(ENTITY_WORDS);
    if (curChar() == '>') return close_frame(TAG_CLOSE);
    return curChar() == '%' ? scan_parameter_reference() : int{NO_TOKEN};
}

int Lexer::scan_notation_name() {
    if (curChar() == '%') return scan_parameter_reference();
    if (!is_name_start(curChar())) return NO_TOKEN;
    states.pop_sub();
    return scan_name_token();
}

int Lexer::scan_notation_body() {
    if (curChar() == '%') return scan_parameter_reference();
    return is_name_start(curChar()) ? scan_keyword(NOTATION_WORDS) : int{NO_TOKEN};
}

// A literal may come here, or the end.
int Lexer::scan_notation_literal(bool isPublic) {
    if (curChar() == '>') return close_frame(TAG_CLOSE);
    if (curChar() == '%') return scan_parameter_reference();
    if (isPublic) return scan_literal_before(SUB_NOTATION_SYSTEM);
    return is_quote(curChar()) ? scan_literal(SYSTEM_LITERAL) : int{NO_TOKEN};
}

// The text of an ignored section, with the sections inside it, up to its own "]]>".
int Lexer::scan_ignored_text() {
    for (int open = 1; open > 0;) {
        if (read_markup() == END_OF_INPUT) {
            errors.lex_error(QVOXException::UNEXPECTED_EOF_ERR, "unterminated ignore section", 0);
        }
        if (token.ends_in('<', '!', '[')) ++open;
        if (token.ends_in(']', ']', '>')) --open;
    }
    token.shorten_to(token.length() - 3);
    set_pending(COND_END, nullptr);
    return close_frame(IGNORE_TEXT);
}

int Lexer::scan_doctype() {
    switch (states.sub_state()) {
        case SUB_START: return scan_declared_name(SUB_DOCTYPE_EXTERNAL);
        case SUB_DOCTYPE_EXTERNAL: return scan_doctype_external();
        case SUB_DOCTYPE_SYSTEM: return scan_last_literal(SYSTEM_LITERAL);
        case SUB_DOCTYPE_PUBLIC: return scan_literal_before(SUB_DOCTYPE_SYSTEM);
        case SUB_DTD_BODY: return scan_subset();
        default: return NO_TOKEN;
    }
}

int Lexer::scan_element_decl() {
    return states.sub_state() == SUB_START ? scan_declared_name(SUB_ELEMENT_BODY)
                                           : scan_element_body();
}

int Lexer::scan_attlist_decl() {
    switch (states.sub_state()) {
        case SUB_START: return scan_declared_name(SUB_ATTLIST_BODY);
        case SUB_ATT_NOTATION: return scan_notation_list();
        case SUB_ATT_ENUM: return scan_enumeration();
        default: return scan_attlist_body();
    }
}

int Lexer::scan_entity_decl() {
    switch (states.sub_state()) {
        case SUB_START: return scan_entity_start();
        case SUB_ENTITY_SYSTEM: return scan_last_literal(SYSTEM_LITERAL);
        case SUB_ENTITY_PUBLIC: return scan_literal_before(SUB_ENTITY_SYSTEM);
        case SUB_ENTITY_NDATA: return scan_notation_name();
        default: return scan_entity_body();
    }
}

int Lexer::scan_notation_decl() {
    switch (states.sub_state()) {
        case SUB_START: return scan_declared_name(SUB_NOTATION_BODY);
        case SUB_NOTATION_SYSTEM: return scan_notation_literal(false);
        case SUB_NOTATION_PUBLIC: return scan_notation_literal(true);
        default: return scan_notation_body();
    }
}

int Lexer::scan_cond_section() {
    const int sub = states.sub_state();
    if (sub == SUB_START) return curChar() == 'I' ? scan_keyword(SECTION_WORDS) : int{NO_TOKEN};
    if (sub == SUB_IGNORE_BODY) return scan_ignored_text();
    if (curChar() != '[') return NO_TOKEN;
    if (sub == SUB_INCLUDE_OPEN) {
        states.push_frame(LEX_INCLUDE_BODY);
    } else {
        states.push_sub(SUB_IGNORE_BODY);
    }
    return single_character();
}

// The body of an included section has no scanning of its own.
int Lexer::scan_include_body() { return NO_TOKEN; }

}  // namespace qvox

// The lexer's states of the document type declaration and of the declarations inside it.
#include "scanner/lexer.h"
#include "scanner/references.h"
#include "scanner/scanner_error.h"

namespace qvox {

namespace {

constexpr std::size_t WORD_BEHIND_BANG = 2;  // "<!"
constexpr std::size_t WORD_BEHIND_SIGN = 1;  // "#"

constexpr Keyword DECLARATION_WORDS[] = {
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
    {"EMPTY", KW_EMPTY, 0},
    {"ANY", KW_ANY, 0},
};
constexpr Keyword ELEMENT_SIGN_WORDS[] = {
    {"PCDATA", KW_PCDATA, 0},
};
constexpr Keyword ATTLIST_WORDS[] = {
    {"CDATA", KW_CDATA, 0},
    {"ID", KW_ID, 0},
    {"IDREF", KW_IDREF, 0},
    {"IDREFS", KW_IDREFS, 0},
    {"ENTITY", KW_ENTITY, 0},
    {"ENTITIES", KW_ENTITIES, 0},
    {"NMTOKEN", KW_NMTOKEN, 0},
    {"NMTOKENS", KW_NMTOKENS, 0},
    {"NOTATION", KW_NOTATION, SUB_ATT_NOTATION},
};
constexpr Keyword ATTLIST_SIGN_WORDS[] = {
    {"REQUIRED", KW_REQUIRED, 0},
    {"IMPLIED", KW_IMPLIED, 0},
    {"FIXED", KW_FIXED, 0},
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

// A parameter reference between two tokens: the entity's text is scanned in the same state. The end
// of input behind it is the end of input of the call.
int scan_parameter_reference() {
    curChar = read_reference('%', nullptr);
    return START_AGAIN;
}

// The '>' of a declaration.
int close_declaration() {
    pop_frame();
    read_char();
    return TAG_CLOSE;
}

// The name behind the declaration's word, and the sub-state that follows it.
int scan_declared_name(SubState next) {
    if (!is_name_start(curChar)) return NO_TOKEN;
    const int token = scan_name_token();
    push_sub(next);
    return token;
}

// A word that may be a keyword and is a name otherwise. The value is its text in both cases.
template <std::size_t count>
int scan_keyword_or_name(const Keyword (&table)[count]) {
    scan_name_token();
    const Keyword* keyword = find_keyword(table);
    if (keyword == nullptr) return NAME;
    if (keyword->sub != 0) push_sub(static_cast<SubState>(keyword->sub));
    return keyword->token;
}

// '#' and a word of the table. The value is the text with its sign.
template <std::size_t count>
int scan_sign_keyword(const Keyword (&table)[count]) {
    read_char();
    append_char(curChar);
    if (!is_name_start(curChar)) return NO_TOKEN;
    scan_name();
    token_copy();
    const Keyword* keyword = find_keyword(table, WORD_BEHIND_SIGN);
    return keyword != nullptr ? keyword->token : int{NO_TOKEN};
}

// A literal that ends its sub-state, or leads to the sub-state `next`.
int scan_last_literal(int token) {
    if (!is_quote(curChar)) return NO_TOKEN;
    pop_sub();
    return scan_literal(token);
}

int scan_literal_before(SubState next) {
    if (!is_quote(curChar)) return NO_TOKEN;
    set_sub(next);
    return scan_literal(PUBID_LITERAL);
}

int scan_doctype_external() {
    if (is_name_start(curChar)) return scan_keyword(DOCTYPE_WORDS);
    if (curChar == '>') return close_declaration();
    if (curChar != '[') return NO_TOKEN;
    push_sub(SUB_DTD_BODY);
    return single_character();
}

// Behind "<!" in a subset.
int scan_subset_declaration() {
    read_char();
    append_char(curChar);
    if (curChar == '-') return scan_comment_start();
    if (!is_name_start(curChar)) return NO_TOKEN;
    scan_name();
    const Keyword* declaration = find_keyword(DECLARATION_WORDS, WORD_BEHIND_BANG);
    if (declaration == nullptr) return NO_TOKEN;
    push_frame(static_cast<MainState>(declaration->sub));
    return declaration->token;
}

// Between the declarations of a subset.
int scan_subset() {
    if (curChar == ']') {
        pop_sub();
        return single_character();
    }
    if (curChar != '<') return NO_TOKEN;
    read_char();
    append_char(curChar);
    if (curChar == '!') return scan_subset_declaration();
    return curChar == '?' ? scan_pi_start() : int{NO_TOKEN};
}

int scan_element_body() {
    if (is_name_start(curChar)) return scan_keyword_or_name(ELEMENT_WORDS);
    switch (curChar) {
        case '#': return scan_sign_keyword(ELEMENT_SIGN_WORDS);
        case '(':
        case ')':
        case '?':
        case '*':
        case '+':
        case '|':
        case ',': return single_character();
        case '>': return close_declaration();
        case '%': return scan_parameter_reference();
        default: return NO_TOKEN;
    }
}

int scan_attlist_body() {
    if (is_name_start(curChar)) return scan_keyword_or_name(ATTLIST_WORDS);
    if (is_quote(curChar)) return scan_literal(ATT_VALUE);
    switch (curChar) {
        case '#': return scan_sign_keyword(ATTLIST_SIGN_WORDS);
        case '(': push_sub(SUB_ATT_ENUM); return single_character();
        case '>': return close_declaration();
        case '%': return scan_parameter_reference();
        default: return NO_TOKEN;
    }
}

// What an enumeration and a list of notations share.
int scan_list_symbol() {
    switch (curChar) {
        case '|': return single_character();
        case ')': pop_sub(); return single_character();
        case '%': return scan_parameter_reference();
        default: return NO_TOKEN;
    }
}

int scan_notation_list() {
    if (is_name_start(curChar)) return scan_name_token();
    return curChar == '(' ? single_character() : scan_list_symbol();
}

int scan_enumeration() {
    if (!is_name_char(curChar)) return scan_list_symbol();
    scan_name_token();
    return NMTOKEN;
}

int scan_entity_start() {
    return curChar == '%' ? single_character() : scan_declared_name(SUB_ENTITY_BODY);
}

int scan_entity_body() {
    if (is_quote(curChar)) return scan_literal(ENTITY_VALUE);
    if (is_name_start(curChar)) return scan_keyword(ENTITY_WORDS);
    if (curChar == '>') return close_declaration();
    return curChar == '%' ? scan_parameter_reference() : int{NO_TOKEN};
}

int scan_notation_name() {
    if (curChar == '%') return scan_parameter_reference();
    if (!is_name_start(curChar)) return NO_TOKEN;
    pop_sub();
    return scan_name_token();
}

int scan_notation_body() {
    if (curChar == '%') return scan_parameter_reference();
    return is_name_start(curChar) ? scan_keyword(NOTATION_WORDS) : int{NO_TOKEN};
}

// A literal may come here, or the end.
int scan_notation_literal(bool isPublic) {
    if (curChar == '>') return close_declaration();
    if (curChar == '%') return scan_parameter_reference();
    if (isPublic) return scan_literal_before(SUB_NOTATION_SYSTEM);
    return is_quote(curChar) ? scan_literal(SYSTEM_LITERAL) : int{NO_TOKEN};
}

// The text of an ignored section, with the sections inside it, up to its own "]]>".
int scan_ignored_text() {
    for (int open = 1; open > 0;) {
        read_char();
        if (curChar == -1) {
            lex_error(QVOXException::UNEXPECTED_EOF_ERR, "unterminated ignore section", 0);
        }
        append_char(curChar);
        if (token_ends_in('<', '!', '[')) ++open;
        if (token_ends_in(']', ']', '>')) --open;
    }
    tokenLen -= 3;
    set_pending(COND_END, nullptr);
    pop_frame();
    read_char();
    return IGNORE_TEXT;
}

}  // namespace

int scan_doctype() {
    switch (sub_state()) {
        case SUB_START: return scan_declared_name(SUB_DOCTYPE_EXTERNAL);
        case SUB_DOCTYPE_EXTERNAL: return scan_doctype_external();
        case SUB_DOCTYPE_SYSTEM: return scan_last_literal(SYSTEM_LITERAL);
        case SUB_DOCTYPE_PUBLIC: return scan_literal_before(SUB_DOCTYPE_SYSTEM);
        case SUB_DTD_BODY: return scan_subset();
        default: return NO_TOKEN;
    }
}

int scan_element_decl() {
    return sub_state() == SUB_START ? scan_declared_name(SUB_ELEMENT_BODY) : scan_element_body();
}

int scan_attlist_decl() {
    switch (sub_state()) {
        case SUB_START: return scan_declared_name(SUB_ATTLIST_BODY);
        case SUB_ATT_NOTATION: return scan_notation_list();
        case SUB_ATT_ENUM: return scan_enumeration();
        default: return scan_attlist_body();
    }
}

int scan_entity_decl() {
    switch (sub_state()) {
        case SUB_START: return scan_entity_start();
        case SUB_ENTITY_SYSTEM: return scan_last_literal(SYSTEM_LITERAL);
        case SUB_ENTITY_PUBLIC: return scan_literal_before(SUB_ENTITY_SYSTEM);
        case SUB_ENTITY_NDATA: return scan_notation_name();
        default: return scan_entity_body();
    }
}

int scan_notation_decl() {
    switch (sub_state()) {
        case SUB_START: return scan_declared_name(SUB_NOTATION_BODY);
        case SUB_NOTATION_SYSTEM: return scan_notation_literal(false);
        case SUB_NOTATION_PUBLIC: return scan_notation_literal(true);
        default: return scan_notation_body();
    }
}

int scan_cond_section() {
    const int sub = sub_state();
    if (sub == SUB_START) return curChar == 'I' ? scan_keyword(SECTION_WORDS) : int{NO_TOKEN};
    if (sub == SUB_IGNORE_BODY) return scan_ignored_text();
    if (curChar != '[') return NO_TOKEN;
    if (sub == SUB_INCLUDE_OPEN) {
        push_frame(LEX_INCLUDE_BODY);
    } else {
        push_sub(SUB_IGNORE_BODY);
    }
    return single_character();
}

// The body of an included section has no scanning of its own.
int scan_include_body() { return NO_TOKEN; }

}  // namespace qvox

// The lexer's states of the document proper.
#include "scanner/document_actions.h"
#include "scanner/lexer.h"
#include "scanner/literals.h"
#include "scanner/recent_names.h"
#include "scanner/references.h"
#include "scanner/scanner_error.h"

namespace qvox {

namespace {

constexpr std::size_t WORD_BEHIND_BANG = 2;      // "<!"
constexpr std::size_t WORD_BEHIND_BRACKET = 3;   // "<!["
constexpr std::size_t WORD_BEHIND_QUESTION = 2;  // "<?"

// Reads on within markup: what is looked at belongs to the token, for messages too.
int read_markup() {
    read_char();
    append_char(curChar);
    return curChar;
}

int open_frame(int token, MainState main) {
    push_frame(main);
    return token;
}

// Ends a token whose closing delimiter of `length` units has been gathered with it. The closing
// token comes next, then what lies behind.
int close_text(int token, int closingToken, std::size_t length) {
    tokenLen -= length;
    set_pending(closingToken, nullptr);
    token_lend();
    pop_frame();
    read_char();
    return token;
}

bool token_word_is(std::size_t offset, const char* word) {
    return wide_narrow_compare(terminated_token() + offset, word) == 0;
}

// Behind "<![".
int scan_section_start() {
    if (read_markup() != 'C') return open_frame(COND_START, LEX_COND_SECTION);
    scan_name();
    if (curChar != '[' || !token_word_is(WORD_BEHIND_BRACKET, "CDATA")) return NO_TOKEN;
    append_char('[');
    push_frame(LEX_CDATA);
    read_char();
    return CDATA_START;
}

// Behind "<!".
int scan_declaration_start() {
    const int c = read_markup();
    if (c == '-') return scan_comment_start();
    if (c == '[') return scan_section_start();
    if (!is_name_start(c)) return NO_TOKEN;
    scan_name();
    const bool isDoctype =
        main_state() == LEX_DOCUMENT && token_word_is(WORD_BEHIND_BANG, "DOCTYPE");
    return isDoctype ? open_frame(DOCTYPE_START, LEX_DOCTYPE) : int{NO_TOKEN};
}

// Behind "<", in a document or an element's content.
int scan_markup() {
    const int c = read_markup();
    if (c == '!') return scan_declaration_start();
    if (c == '?') return scan_pi_start();
    if (c == '/') {
        pop_frame();
        push_frame(LEX_END_TAG);
        read_char();
        return ETAG_OPEN;
    }
    if (!is_name_start(c)) return NO_TOKEN;
    begin_tag(STAG_OPEN);
    return open_frame(STAG_OPEN, LEX_START_TAG);
}

// Appends a run and reads the character behind it.
int next_in_run(const RunStops& stops) {
    append_run(stops);
    return curGetc();
}

// Text up to the next markup, with references replaced. A '<' that came from an entity's text is
// markup, one from a character reference isn't.
int scan_character_data() {
    int c = curChar;
    if (tokenLen != 0)
        c = next_in_run(CONTENT_STOPS);  // the first character is in the token already
    for (;; c = next_in_run(CONTENT_STOPS)) {
        bool isCharRef = false;
        while (c == '&' && !isCharRef) c = read_reference(c, &isCharRef);
        if (c == -1) lex_error(QVOXException::UNEXPECTED_EOF_ERR, "unterminated char data", 0);
        if (c == '<' && !isCharRef) break;
        append_char(c);
        if (c == '>' && token_ends_in(']', ']', '>')) {
            lex_error(QVOXException::SYNTAX_ERR, "unexpected token found", tokenLen - 3);
        }
    }
    curChar = c;
    if (tokenLen == 0) return START_AGAIN;
    token_lend();
    return CHARDATA;
}

// Reads and appends one more character of a text that only its delimiter ends.
int read_one(const char* unterminated) {
    const int c = curGetc();
    if (c == -1) lex_error(QVOXException::UNEXPECTED_EOF_ERR, unterminated, 0);
    append_char(c);
    return c;
}

// The same behind a run.
int read_text(const char* unterminated) {
    append_run(CDATA_STOPS);
    return read_one(unterminated);
}

// Behind a hyphen every character is looked at by itself.
int read_comment() {
    if (tokenText[tokenLen - 1] != '-') append_run(COMMENT_STOPS);
    return read_one("unterminated comment");
}

bool is_xml_in_any_case(const Unit* name) { return wide_narrow_casecompare(name, "xml") == 0; }

int scan_pi_target() {
    if (!is_name_start(curChar)) return NO_TOKEN;
    scan_name();
    if (is_xml_in_any_case(tokenText)) {
        lex_error(QVOXException::INVALID_XML_DECL_ERR, "xml decl must appear first line", 0);
    }
    tokenValue = kept_name(tokenText, tokenLen);
    push_sub(SUB_PI_DATA);
    return PI_TARGET;
}

// A target directly followed by "?>" has no data; with white space between them its data is empty.
int scan_pi_data() {
    int c = curChar;
    while (c != '>' || tokenLen < 2 || tokenText[tokenLen - 2] != '?') {
        c = read_text("unterminated processing instruction");
    }
    if (tokenLen > 2 || token_follows_space()) return close_text(PI_DATA, PI_END, 2);
    pop_frame();
    read_char();
    return PI_END;
}

// The value of a pseudo-attribute. The sub-state tells which, and is done with.
int scan_xml_decl_value() {
    const int sub = sub_state();
    if (sub == SUB_START) return NO_TOKEN;
    pop_sub();
    if (sub == SUB_VERSION_VALUE) return scan_literal(VERSION_NUM);
    if (sub == SUB_ENCODING_VALUE) return scan_literal(ENC_NAME);
    scan_literal(KW_STANDALONE);
    return tokenText[0] == 'y' ? STANDALONE_YES : STANDALONE_NO;
}

// The value lasts as long as the tag in hand.
int scan_attribute_value() {
    curChar = read_literal(curChar, ATT_VALUE);
    tokenValue = copy_for_tag(tokenText, tokenLen);
    return ATT_VALUE;
}

constexpr Keyword XML_DECL_WORDS[] = {
    {"version", KW_VERSION, SUB_VERSION_VALUE},
    {"encoding", KW_ENCODING, SUB_ENCODING_VALUE},
    {"standalone", KW_STANDALONE, SUB_STANDALONE_VALUE},
};

}  // namespace

int scan_comment_start() {
    if (read_markup() != '-') return NO_TOKEN;
    push_frame(LEX_COMMENT);
    read_char();
    return COMMENT_START;
}

// On line 1 a target that begins with a lower-case x is looked at here: "xml" opens a declaration.
int scan_pi_start() {
    read_char();
    if (curLine != 1 || curChar != 'x') return open_frame(PI_START, LEX_PI);
    append_char(curChar);
    scan_name();
    if (token_word_is(WORD_BEHIND_QUESTION, "xml")) return open_frame(XML_DECL_START, LEX_XML_DECL);
    set_pending(PI_TARGET,
                kept_name(tokenText + WORD_BEHIND_QUESTION, tokenLen - WORD_BEHIND_QUESTION));
    push_frame(LEX_PI);
    push_sub(SUB_PI_DATA);
    return PI_START;
}

int scan_document() { return curChar == '<' ? scan_markup() : int{NO_TOKEN}; }

int scan_content() { return curChar == '<' ? scan_markup() : scan_character_data(); }

int scan_start_tag() {
    if (is_name_start(curChar)) return scan_name_token();
    if (is_quote(curChar)) return scan_attribute_value();
    switch (curChar) {
        case '=': return single_character();
        case '/':
            read_char();
            if (curChar != '>') return NO_TOKEN;
            pop_frame();
            read_char();
            return EMPTY_TAG_CLOSE;
        case '>':
            pop_frame();
            push_frame(LEX_CONTENT);
            read_char();
            return TAG_CLOSE;
        default: return NO_TOKEN;
    }
}

int scan_end_tag() {
    if (is_name_start(curChar)) return scan_name_token();
    if (curChar != '>') return NO_TOKEN;
    pop_frame();
    read_char();
    return TAG_CLOSE;
}

int scan_comment() {
    for (;;) {
        const int c = read_comment();
        if (tokenLen < 3 || tokenText[tokenLen - 2] != '-' || tokenText[tokenLen - 3] != '-') {
            continue;
        }
        if (c == '>') return close_text(COMMENT_TEXT, COMMENT_END, 3);
        lex_error(QVOXException::SYNTAX_ERR, "'--' found in comment", 0);
    }
}

int scan_cdata() {
    int c = curChar;
    while (c != '>' || !token_ends_in(']', ']', '>')) c = read_text("unterminated cdsect");
    return close_text(CDATA_TEXT, CDATA_END, 3);
}

int scan_pi() { return sub_state() == SUB_START ? scan_pi_target() : scan_pi_data(); }

int scan_xml_decl() {
    if (is_name_start(curChar)) return scan_keyword(XML_DECL_WORDS);
    if (is_quote(curChar)) return scan_xml_decl_value();
    if (curChar == '=') return single_character();
    if (curChar != '?') return NO_TOKEN;
    read_char();
    if (curChar != '>') return NO_TOKEN;
    pop_frame();
    read_char();
    return PI_END;
}

}  // namespace qvox

// The lexer's states of the document proper.
#include "scanner/lexer.h"
#include "text/char_classes.h"

namespace qvox {

namespace {

constexpr std::size_t WORD_BEHIND_BANG = 2;      // "<!"
constexpr std::size_t WORD_BEHIND_BRACKET = 3;   // "<!["
constexpr std::size_t WORD_BEHIND_QUESTION = 2;  // "<?"

constexpr Keyword XML_DECL_WORDS[] = {
    {"version", KW_VERSION, SUB_VERSION_VALUE},
    {"encoding", KW_ENCODING, SUB_ENCODING_VALUE},
    {"standalone", KW_STANDALONE, SUB_STANDALONE_VALUE},
};

bool is_xml_in_any_case(const Unit* name) { return wide_narrow_casecompare(name, "xml") == 0; }

}  // namespace

int Lexer::scan_document() { return curChar() == '<' ? scan_markup() : int{NO_TOKEN}; }

int Lexer::scan_content() { return curChar() == '<' ? scan_markup() : scan_character_data(); }

// Behind "<", in a document or an element's content.
int Lexer::scan_markup() {
    const int c = read_markup();
    if (c == '!') return scan_declaration_start();
    if (c == '?') return scan_pi_start();
    if (c == '/') {
        states.pop_frame();
        states.push_frame(LEX_END_TAG);
        read_char();
        return ETAG_OPEN;
    }
    if (!is_name_start(c)) return NO_TOKEN;
    elements.begin_tag();
    return open_frame(STAG_OPEN, LEX_START_TAG);
}

// Behind "<!".
int Lexer::scan_declaration_start() {
    const int c = read_markup();
    if (c == '-') return scan_comment_start();
    if (c == '[') return scan_section_start();
    if (!is_name_start(c)) return NO_TOKEN;
    scan_name();
    const bool isDoctype =
        states.main_state() == LEX_DOCUMENT && token_word_is(WORD_BEHIND_BANG, "DOCTYPE");
    return isDoctype ? open_frame(DOCTYPE_START, LEX_DOCTYPE) : int{NO_TOKEN};
}

// Behind "<![".
int Lexer::scan_section_start() {
    if (read_markup() != 'C') return open_frame(COND_START, LEX_COND_SECTION);
    scan_name();
    if (curChar() != '[' || !token_word_is(WORD_BEHIND_BRACKET, "CDATA")) return NO_TOKEN;
    token.append_char('[');
    return enter_text(CDATA_START, LEX_CDATA);
}

// Behind "<!-".
int Lexer::scan_comment_start() {
    return read_markup() == '-' ? enter_text(COMMENT_START, LEX_COMMENT) : int{NO_TOKEN};
}

// Behind "<?". On line 1 a target that begins with a lower-case x is looked at here: "xml" opens a
// declaration.
int Lexer::scan_pi_start() {
    read_char();
    if (input.curLine() != 1 || curChar() != 'x') return open_frame(PI_START, LEX_PI);
    token.append_char(curChar());
    scan_name();
    if (token_word_is(WORD_BEHIND_QUESTION, "xml")) return open_frame(XML_DECL_START, LEX_XML_DECL);
    const Name& target =
        names.keep(token.text() + WORD_BEHIND_QUESTION, token.length() - WORD_BEHIND_QUESTION);
    set_pending(PI_TARGET, target.units());
    states.push_frame(LEX_PI);
    states.push_sub(SUB_PI_DATA);
    return PI_START;
}

bool Lexer::token_word_is(std::size_t offset, const char* word) {
    return wide_narrow_compare(token.terminate() + offset, word) == 0;
}

// The character in hand is the last of an opening, and text follows.
int Lexer::enter_text(int tokenNumber, MainState main) {
    states.push_frame(main);
    read_char();
    return tokenNumber;
}

// Text up to the next markup, with references replaced. A '<' that came from an entity's text is
// markup, one from a character reference isn't.
int Lexer::scan_character_data() {
    const bool isInToken = token.length() != 0;  // all but the '&' of a reference
    int c = isInToken ? next_in_run(CONTENT_STOPS) : curChar();
    for (;; c = next_in_run(CONTENT_STOPS)) {
        bool isCharRef = false;
        while (c == '&' && !isCharRef) c = references.read_reference(c, &isCharRef);
        if (c == END_OF_INPUT) {
            errors.lex_error(QVOXException::UNEXPECTED_EOF_ERR, "unterminated char data", 0);
        }
        if (c == '<' && !isCharRef) break;
        token.append_char(c);
        if (c == '>' && token.ends_in(']', ']', '>')) {
            errors.lex_error(QVOXException::SYNTAX_ERR, "unexpected token found",
                             token.length() - 3);
        }
    }
    input.curChar = c;
    if (token.length() == 0) return START_AGAIN;
    token_lend();
    return CHARDATA;
}

// Appends a run and reads the character behind it.
int Lexer::next_in_run(const RunStops& stops) {
    append_run(token, input, stops);
    return input.curGetc();
}

// Reads and appends one more character of a text that only its delimiter ends.
int Lexer::read_one(const char* unterminated) {
    const int c = input.curGetc();
    if (c == END_OF_INPUT) errors.lex_error(QVOXException::UNEXPECTED_EOF_ERR, unterminated, 0);
    token.append_char(c);
    return c;
}

// The same behind a run.
int Lexer::read_text(const char* unterminated) {
    append_run(token, input, CDATA_STOPS);
    return read_one(unterminated);
}

// Ends a token whose closing delimiter has been gathered with it. The closing token comes next,
// then what lies behind.
int Lexer::close_text(int tokenNumber, int closingToken, std::size_t delimiterLength) {
    token.shorten_to(token.length() - delimiterLength);
    set_pending(closingToken, nullptr);
    token_lend();
    return close_frame(tokenNumber);
}

int Lexer::scan_comment() {
    for (;;) {
        const int c = read_comment();
        if (!token.has_before_last('-', '-')) continue;
        if (c == '>') return close_text(COMMENT_TEXT, COMMENT_END, 3);
        errors.lex_error(QVOXException::SYNTAX_ERR, "'--' found in comment", 0);
    }
}

// Behind a hyphen every character is looked at by itself.
int Lexer::read_comment() {
    if (token.last() != '-') append_run(token, input, COMMENT_STOPS);
    return read_one("unterminated comment");
}

int Lexer::scan_cdata() {
    int c = curChar();
    while (c != '>' || !token.ends_in(']', ']', '>')) c = read_text("unterminated cdsect");
    return close_text(CDATA_TEXT, CDATA_END, 3);
}

int Lexer::scan_pi() { return states.sub_state() == SUB_START ? scan_pi_target() : scan_pi_data(); }

int Lexer::scan_pi_target() {
    if (!is_name_start(curChar())) return NO_TOKEN;
    scan_name();
    if (is_xml_in_any_case(token.text())) {
        errors.lex_error(QVOXException::INVALID_XML_DECL_ERR, "xml decl must appear first line", 0);
    }
    tokenValue.text = names.keep(token.text(), token.length()).units();
    states.push_sub(SUB_PI_DATA);
    return PI_TARGET;
}

// A target directly followed by "?>" has no data; with white space between them its data is empty.
int Lexer::scan_pi_data() {
    int c = curChar();
    while (c != '>' || !token.ends_in('?', '>')) {
        c = read_text("unterminated processing instruction");
    }
    if (token.length() > 2 || previousToken == S) return close_text(PI_DATA, PI_END, 2);
    return close_frame(PI_END);
}

int Lexer::scan_start_tag() {
    if (is_name_start(curChar())) return scan_name_token();
    if (is_quote(curChar())) return scan_attribute_value();
    switch (curChar()) {
        case '=': return single_character();
        case '/':
            read_char();
            return curChar() == '>' ? close_frame(EMPTY_TAG_CLOSE) : int{NO_TOKEN};
        case '>':
            states.pop_frame();
            states.push_frame(LEX_CONTENT);
            read_char();
            return TAG_CLOSE;
        default: return NO_TOKEN;
    }
}

// The value lasts as long as the tag in hand.
int Lexer::scan_attribute_value() {
    input.curChar = literals.read_literal(curChar(), ATT_VALUE);
    tokenValue.value = elements.keep_value(token);
    return ATT_VALUE;
}

int Lexer::scan_end_tag() {
    if (is_name_start(curChar())) return scan_name_token();
    return curChar() == '>' ? close_frame(TAG_CLOSE) : int{NO_TOKEN};
}

int Lexer::scan_xml_decl() {
    if (is_name_start(curChar())) return scan_keyword(XML_DECL_WORDS);
    if (is_quote(curChar())) return scan_xml_decl_value();
    if (curChar() == '=') return single_character();
    if (curChar() != '?') return NO_TOKEN;
    read_char();
    return curChar() == '>' ? close_frame(PI_END) : int{NO_TOKEN};
}

// The value of a pseudo-attribute. The sub-state tells which, and is done with.
int Lexer::scan_xml_decl_value() {
    const int sub = states.sub_state();
    if (sub == SUB_START) return NO_TOKEN;
    states.pop_sub();
    if (sub == SUB_VERSION_VALUE) return scan_literal(VERSION_NUM);
    if (sub == SUB_ENCODING_VALUE) return scan_literal(ENC_NAME);
    scan_literal(KW_STANDALONE);
    return token.text()[0] == 'y' ? STANDALONE_YES : STANDALONE_NO;
}

}  // namespace qvox

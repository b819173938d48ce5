#include "scanner/lexer.h"

#include <utility>

#include "runtime/report.h"
#include "text/char_classes.h"

namespace qvox {

Lexer::Lexer(Heap& parseHeap, Input& inputOfParse, Names& namesOfParse, Declarations& declarations,
             Elements& elementsOfParse, bool externalFiles)
    : heap(parseHeap),
      input(inputOfParse),
      names(namesOfParse),
      elements(elementsOfParse),
      errors(input, token),
      references(input, token, declarations, errors, externalFiles),
      literals(input, token, references, errors) {
    states.push_frame(LEX_DOCUMENT);
}

void Lexer::end() const {
    if (states.height() == 0) return;
    qvox_report(REPORT_WARNING, QVOXException::INTERNAL_ERR, "state sp = %d at EOF",
                states.height());
}

int Lexer::next_token() {
    if (pending.token != 0) return take_pending();
    input.begin_token();
    token.clear();
    int scanned = scan_token();
    while (scanned == START_AGAIN) scanned = scan_token();
    token.terminate();
    previousToken = scanned;
    return scanned;
}

int Lexer::take_pending() {
    const PendingToken taken = std::exchange(pending, {0, nullptr});
    tokenValue.text = taken.text;
    if (std::exchange(subsetEndWaits, false)) pending.token = EXT_SUBSET_END;
    return taken.token;
}

void Lexer::set_pending(int tokenNumber, const Unit* text) {
    subsetEndWaits = pending.token == EXT_SUBSET_END;
    pending = {tokenNumber, text};
}

// The token that begins with curChar.
int Lexer::scan_token() {
    if (curChar() == END_OF_INPUT) {
        states.pop_frame();
        return 0;
    }
    const int main = states.main_state();
    if (is_space(curChar()) && !space_is_text(main)) return scan_space();
    if (!starts_reference(main)) token.append_char(curChar());
    switch (main) {
        case LEX_DOCUMENT: return scan_document();
        case LEX_COMMENT: return scan_comment();
        case LEX_XML_DECL: return scan_xml_decl();
        case LEX_PI: return scan_pi();
        case LEX_START_TAG: return scan_start_tag();
        case LEX_CONTENT: return scan_content();
        case LEX_END_TAG: return scan_end_tag();
        case LEX_CDATA: return scan_cdata();
        case LEX_COND_SECTION: return scan_cond_section();
        case LEX_INCLUDE_BODY: return scan_include_body();
        case LEX_DOCTYPE: return scan_doctype();
        case LEX_ELEMENT_DECL: return scan_element_decl();
        case LEX_ATTLIST_DECL: return scan_attlist_decl();
        case LEX_ENTITY_DECL: return scan_entity_decl();
        case LEX_NOTATION_DECL: return scan_notation_decl();
        default:
            qvox_report(REPORT_FATAL, QVOXException::INTERNAL_ERR, "illegal lex state (%d)", main);
            return NO_TOKEN;
    }
}

int Lexer::scan_space() {
    do {
        token.append_unit(static_cast<Unit>(curChar()));
        read_char();
    } while (is_space(curChar()));
    return S;
}

// White space is text in these states, and a token of its own in all others.
bool Lexer::space_is_text(int main) const {
    return main == LEX_COMMENT || main == LEX_CONTENT || main == LEX_CDATA;
}

// Here '&' and '%' are characters like all others, also as the first.
bool Lexer::is_plain_text(int main) const {
    return main == LEX_COMMENT || main == LEX_CDATA ||
           (main == LEX_PI && states.sub_state() == SUB_PI_DATA) ||
           (main == LEX_COND_SECTION && states.sub_state() == SUB_IGNORE_BODY);
}

bool Lexer::starts_reference(int main) const {
    if (curChar() == '&') return !is_plain_text(main);
    return curChar() == '%' && main != LEX_CONTENT && !is_plain_text(main);
}

// Reads on within markup: what is looked at belongs to the token, for messages too.
int Lexer::read_markup() {
    read_char();
    if (curChar() != END_OF_INPUT) token.append_char(curChar());
    return curChar();
}

// Takes the character in hand as the whole token.
int Lexer::single_character() {
    const int character = curChar();
    read_char();
    return character;
}

int Lexer::open_frame(int tokenNumber, MainState main) {
    states.push_frame(main);
    return tokenNumber;
}

// The character in hand is the last of a construct.
int Lexer::close_frame(int tokenNumber) {
    states.pop_frame();
    read_char();
    return tokenNumber;
}

// curChar is in the token already: appends the characters that can continue a name, and leaves the
// first other one in hand.
void Lexer::scan_name() {
    append_run(token, input, NAME_STOPS);
    read_char();
    while (is_name_char(curChar())) {
        token.append_unit(static_cast<Unit>(curChar()));
        append_run(token, input, NAME_STOPS);
        read_char();
    }
    token.terminate();
}

// A name, or what it opens: NAME with the name as its value.
int Lexer::scan_name_token() {
    scan_name();
    tokenValue.name = &names.keep(token.text(), token.length());
    return NAME;
}

// A quoted literal with curChar as its quote: `tokenNumber`, with the text as its value.
int Lexer::scan_literal(int tokenNumber) {
    input.curChar = literals.read_literal(curChar(), tokenNumber);
    if (tokenNumber == ATT_VALUE) {
        tokenValue.value = heap.halloc_copy(token.text(), token.length());
    } else {
        token_copy();
    }
    return tokenNumber;
}

// The value is a copy of the text that lasts as long as the parse.
void Lexer::token_copy() { tokenValue.text = heap.halloc_copy(token.text(), token.length()); }

// The value is the text itself.
void Lexer::token_lend() { tokenValue.text = token.terminate(); }

// A file is opened for a document in a file only.
void Lexer::load_external_subset(const Unit* systemId) {
    if (systemId == nullptr || input.reading_memory()) return;
    std::unique_ptr<ByteStream> file = references.open_external(systemId);
    if (file != nullptr) input.push_external_subset(std::move(file));
}

void Lexer::subset_level_started() {
    set_pending(EXT_SUBSET_START, nullptr);
    states.push_frame(LEX_DOCTYPE);
    states.push_sub(SUB_DTD_BODY);
}

void Lexer::subset_level_ended() {
    if (pending.token != 0) {
        subsetEndWaits = true;
    } else {
        set_pending(EXT_SUBSET_END, nullptr);
    }
    states.pop_frame();
}

}  // namespace qvox

#include "scanner/lexer.h"

#include "input/level_events.h"
#include "runtime/heap.h"
#include "runtime/report.h"
#include "scanner/literals.h"
#include "scanner/recent_names.h"

namespace qvox {

Unit* tokenValue = nullptr;

namespace {

struct PendingToken {
    int token;  // 0 for none
    Unit* value;
};

PendingToken pending = {0, nullptr};

// The end of an external subset that was met while another token was pending: it comes out behind
// that one.
bool subsetEndWaits = false;

int previousToken = 0;  // the last one that was scanned, pending ones not counted

using Scan = int (*)();
constexpr Scan SCANS[] = {
    nullptr,           scan_document,     scan_comment,      scan_xml_decl,
    scan_pi,           scan_start_tag,    scan_content,      scan_end_tag,
    scan_cdata,        scan_cond_section, scan_include_body, scan_doctype,
    scan_element_decl, scan_attlist_decl, scan_entity_decl,  scan_notation_decl,
};
static_assert(sizeof SCANS / sizeof SCANS[0] == LEX_NOTATION_DECL + 1, "one for each main state");

int take_pending() {
    const int token = pending.token;
    tokenValue = pending.value;
    pending = {0, nullptr};
    if (subsetEndWaits) {
        subsetEndWaits = false;
        pending.token = EXT_SUBSET_END;
    }
    return token;
}

// White space is text in these states, and a token of its own in all others.
bool space_is_text(int main) {
    return main == LEX_COMMENT || main == LEX_CONTENT || main == LEX_CDATA;
}

// Here '&' and '%' are characters like all others, also as the first.
bool is_plain_text(int main) {
    return main == LEX_COMMENT || main == LEX_CDATA ||
           (main == LEX_PI && sub_state() == SUB_PI_DATA) ||
           (main == LEX_COND_SECTION && sub_state() == SUB_IGNORE_BODY);
}

bool starts_reference(int main) {
    if (curChar == '&') return !is_plain_text(main);
    return curChar == '%' && main != LEX_CONTENT && !is_plain_text(main);
}

int scan_space() {
    do {
        append_unit(static_cast<Unit>(curChar));
        read_char();
    } while (is_space(curChar));
    return S;
}

// The token that begins with curChar.
int scan_token() {
    if (curChar == -1) {
        pop_frame();
        return 0;
    }
    const int main = main_state();
    if (is_space(curChar) && !space_is_text(main)) return scan_space();
    if (!starts_reference(main)) append_char(curChar);
    if (main < LEX_DOCUMENT || main > LEX_NOTATION_DECL) {
        qvox_report(REPORT_FATAL, QVOXException::INTERNAL_ERR, "illegal lex state (%d)", main);
    }
    return SCANS[main]();
}

}  // namespace

void lexer_start() {
    token_buffer_create();
    state_stack_create();
    recent_names_start();
    push_frame(LEX_DOCUMENT);
    pending = {0, nullptr};
    subsetEndWaits = false;
    previousToken = 0;
}

void lexer_end(bool accepted) {
    if (accepted && stateTop > 0) {
        qvox_report(REPORT_WARNING, QVOXException::INTERNAL_ERR, "state sp = %d at EOF", stateTop);
    }
    token_buffer_destroy();
    state_stack_destroy();
}

int next_token() {
    if (pending.token != 0) return take_pending();
    tokenCol = curCol;
    tokenLen = 0;
    int token = scan_token();
    while (token == START_AGAIN) token = scan_token();
    terminated_token();
    previousToken = token;
    return token;
}

void scan_name() {
    append_run(NAME_STOPS);
    read_char();
    while (is_name_char(curChar)) {
        append_unit(static_cast<Unit>(curChar));
        append_run(NAME_STOPS);
        read_char();
    }
    terminated_token();
}

void token_copy() { tokenValue = halloc_copy(parseHeap, tokenText, tokenLen); }

void token_lend() {
    terminated_token();
    tokenValue = tokenText;
}

void set_pending(int token, Unit* value) {
    subsetEndWaits = pending.token == EXT_SUBSET_END;
    pending = {token, value};
}

bool token_follows_space() { return previousToken == S; }

const Keyword* find_keyword(const Keyword* begin, const Keyword* end, std::size_t offset) {
    for (const Keyword* row = begin; row != end; ++row) {
        if (wide_narrow_compare(tokenText + offset, row->word) == 0) return row;
    }
    return nullptr;
}

int scan_name_token() {
    scan_name();
    tokenValue = kept_name(tokenText, tokenLen);
    return NAME;
}

int scan_literal(int token) {
    curChar = read_literal(curChar, token);
    token_copy();
    return token;
}

void subset_level_started() {
    set_pending(EXT_SUBSET_START, nullptr);
    push_frame(LEX_DOCTYPE);
    push_sub(SUB_DTD_BODY);
}

void subset_level_ended() {
    if (pending.token != 0) {
        subsetEndWaits = true;
    } else {
        set_pending(EXT_SUBSET_END, nullptr);
    }
    pop_frame();
}

}  // namespace qvox

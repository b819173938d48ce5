#include "scanner/literals.h"

#include "input/input_stack.h"
#include "runtime/report.h"
#include "scanner/references.h"
#include "scanner/run_stops.h"
#include "scanner/scanner_error.h"
#include "scanner/token.h"
#include "scanner/token_buffer.h"
#include "text/char_classes.h"
#include "text/temporaries.h"

namespace qvox {

namespace {

constexpr char PUBLIC_ID_SYMBOLS[] = " \r\n'()+,/=?;!*#@$%";

struct EncodingName {
    const char* name;
    EncodingId required;  // what the file must have been read as so far
    EncodingId becomes;
};

constexpr EncodingName ENCODING_NAMES[] = {
    {"UTF-8", UTF8, UTF8}, {"UTF-16", UTF16, UTF16},   {"Shift_JIS", UTF8, SJIS},
    {"EUC-JP", UTF8, EUC}, {"ISO-2022-JP", UTF8, JIS},
};

[[noreturn]] void declaration_error(const char* message) {
    lex_error(QVOXException::INVALID_XML_DECL_ERR, message, 0);
}

bool is_ascii_name_char(Unit unit) { return unit < 0x80 && charClassTable[unit] == CLASS_NAME; }

bool is_ascii_letter(Unit unit) {
    return (unit >= 'A' && unit <= 'Z') || (unit >= 'a' && unit <= 'z');
}

bool is_in(const char* symbols, Unit unit) {
    for (; *symbols != 0; ++symbols) {
        if (*symbols == unit) return true;
    }
    return false;
}

void check_public_id(const Unit* text) {
    for (; *text != 0; ++text) {
        if (is_ascii_name_char(*text) || is_in(PUBLIC_ID_SYMBOLS, *text)) continue;
        lex_error(QVOXException::INVALID_CHAR_ERR, "illegal public id", 0);
    }
}

void check_version(const Unit* text) {
    if (*text == 0) declaration_error("empty version number");
    for (; *text != 0; ++text) {
        if (!is_ascii_name_char(*text)) declaration_error("illegal version number");
    }
}

void check_standalone(const Unit* text) {
    if (wide_narrow_compare(text, "yes") == 0 || wide_narrow_compare(text, "no") == 0) return;
    declaration_error("illegal standalone value");
}

void check_encoding_form(const Unit* text) {
    if (!is_ascii_letter(*text)) declaration_error("illegal encoding first character");
    while (*++text != 0) {
        // Of the name characters, the colon is the one that an encoding name can't have.
        if (!is_ascii_name_char(*text) || *text == ':') declaration_error("illegal encoding");
    }
}

const EncodingName& find_encoding(const Unit* text) {
    for (const EncodingName& row : ENCODING_NAMES) {
        if (wide_narrow_casecompare(text, row.name) == 0) return row;
    }
    declaration_error("not supported encoding");
}

void check_encoding(const Unit* text) {
    check_encoding_form(text);
    const EncodingName& encoding = find_encoding(text);
    qvox_debug("xml decl encoding = %s", OsTemp(text).get());
    if (docEncoding != encoding.required) {
        declaration_error("encoding decl not match to XML file format");
    }
    switch_encoding(encoding.becomes);
}

}  // namespace

int read_literal(int quote, int token) {
    const bool hasParameterReferences = token == ENTITY_VALUE;
    const bool hasReferences = token == ATT_VALUE || token == ENTITY_VALUE;
    tokenLen = 0;
    append_run(LITERAL_STOPS);
    int c = curGetc();
    while (c != quote) {
        if (c == -1) lex_error(QVOXException::UNEXPECTED_EOF_ERR, "unterminated literal", 0);
        if ((c == '&' && hasReferences) || (c == '%' && hasParameterReferences)) {
            bool isCharRef = false;
            c = read_reference(c, &isCharRef);
            if (!isCharRef) continue;
        }
        append_char(c);
        append_run(LITERAL_STOPS);
        c = curGetc();
    }
    check_literal(token, terminated_token());
    return curGetc();
}

void check_literal(int token, const Unit* text) {
    switch (token) {
        case PUBID_LITERAL: check_public_id(text); break;
        case VERSION_NUM: check_version(text); break;
        case KW_STANDALONE: check_standalone(text); break;
        case ENC_NAME: check_encoding(text); break;
        default: break;
    }
}

}  // namespace qvox

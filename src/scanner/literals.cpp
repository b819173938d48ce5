#include "scanner/literals.h"

#include "runtime/report.h"
#include "scanner/run_stops.h"
#include "scanner/token.h"
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

const EncodingName* find_encoding(const Unit* text) {
    for (const EncodingName& row : ENCODING_NAMES) {
        if (wide_narrow_casecompare(text, row.name) == 0) return &row;
    }
    return nullptr;
}

}  // namespace

int Literals::read_literal(int quote, int tokenNumber) {
    const bool hasParameterReferences = tokenNumber == ENTITY_VALUE;
    const bool hasReferences = tokenNumber == ATT_VALUE || tokenNumber == ENTITY_VALUE;
    token.clear();
    append_run(token, input, LITERAL_STOPS);
    int c = input.curGetc();
    while (c != quote) {
        if (c == END_OF_INPUT) {
            errors.lex_error(QVOXException::UNEXPECTED_EOF_ERR, "unterminated literal", 0);
        }
        if ((c == '&' && hasReferences) || (c == '%' && hasParameterReferences)) {
            bool isCharRef = false;
            c = references.read_reference(c, &isCharRef);
            if (!isCharRef) continue;
        }
        token.append_char(c);
        append_run(token, input, LITERAL_STOPS);
        c = input.curGetc();
    }
    check_literal(tokenNumber, token.terminate());
    return input.curGetc();
}

// Raises the error of a public identifier, version number, standalone value or encoding name that
// is not well formed, and lets an encoding name take effect. Other literals pass.
void Literals::check_literal(int tokenNumber, const Unit* text) {
    switch (tokenNumber) {
        case PUBID_LITERAL: check_public_id(text); break;
        case VERSION_NUM: check_version(text); break;
        case KW_STANDALONE: check_standalone(text); break;
        case ENC_NAME: check_encoding(text); break;
        default: break;
    }
}

void Literals::check_public_id(const Unit* text) const {
    for (; *text != 0; ++text) {
        if (is_ascii_name_char(*text) || is_in(PUBLIC_ID_SYMBOLS, *text)) continue;
        errors.lex_error(QVOXException::INVALID_CHAR_ERR, "illegal public id", 0);
    }
}

void Literals::check_version(const Unit* text) const {
    if (*text == 0) declaration_error("empty version number");
    for (; *text != 0; ++text) {
        if (!is_ascii_name_char(*text)) declaration_error("illegal version number");
    }
}

void Literals::check_standalone(const Unit* text) const {
    if (wide_narrow_compare(text, "yes") == 0 || wide_narrow_compare(text, "no") == 0) return;
    declaration_error("illegal standalone value");
}

void Literals::check_encoding(const Unit* text) {
    check_encoding_form(text);
    const EncodingName* name = find_encoding(text);
    if (name == nullptr) declaration_error("not supported encoding");
    qvox_debug("xml decl encoding = %s", OsTemp(text).get());
    if (input.docEncoding() != name->required) {
        declaration_error("encoding decl not match to XML file format");
    }
    input.switch_encoding(name->becomes);
}

void Literals::check_encoding_form(const Unit* text) const {
    if (!is_ascii_letter(*text)) declaration_error("illegal encoding first character");
    while (*++text != 0) {
        // Of the name characters, the colon is the one that an encoding name can't have.
        if (!is_ascii_name_char(*text) || *text == ':') declaration_error("illegal encoding");
    }
}

void Literals::declaration_error(const char* message) const {
    errors.lex_error(QVOXException::INVALID_XML_DECL_ERR, message, 0);
}

}  // namespace qvox

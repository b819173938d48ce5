// Quoted literals: read with the references that their kind allows, and checked by their kind.
#pragma once

#include "input/input.h"
#include "scanner/references.h"
#include "scanner/scanner_error.h"
#include "scanner/token_buffer.h"
#include "text/wide.h"

namespace qvox {

class Literals {
public:
    Literals(Input& inputOfParse, TokenBuffer& tokenInHand, References& referencesOfParse,
             const ScannerErrors& scannerErrors)
        : input(inputOfParse),
          token(tokenInHand),
          references(referencesOfParse),
          errors(scannerErrors) {}

    // Reads the literal of the kind `tokenNumber` behind its opening `quote`, which is in hand,
    // into the token buffer. Returns the first character behind the closing quote; an encoding name
    // has changed the decoder by then. A quote from an entity's text closes the literal too, one
    // from a character reference doesn't.
    int read_literal(int quote, int tokenNumber);

private:
    void check_literal(int tokenNumber, const Unit* text);
    void check_public_id(const Unit* text) const;
    void check_version(const Unit* text) const;
    void check_standalone(const Unit* text) const;
    void check_encoding(const Unit* text);
    void check_encoding_form(const Unit* text) const;
    [[noreturn]] void declaration_error(const char* message) const;

    Input& input;
    TokenBuffer& token;
    References& references;
    const ScannerErrors& errors;
};

}  // namespace qvox

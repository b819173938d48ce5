// References are resolved in the scanner, before the grammar sees anything: a character reference
// is a character, an entity reference a new level of the input.
#pragma once

#include "input/input.h"
#include "scanner/dtd_actions.h"
#include "scanner/scanner_error.h"
#include "scanner/token_buffer.h"
#include "text/wide.h"

namespace qvox {

class References {
public:
    // While `opensFiles` is false, external entities are like files that can't be opened.
    References(Input& inputOfParse, TokenBuffer& tokenInHand, Declarations& declarations,
               const ScannerErrors& scannerErrors, bool opensFiles)
        : input(inputOfParse),
          token(tokenInHand),
          dtd(declarations),
          errors(scannerErrors),
          externalFiles(opensFiles) {}

    // Reads the reference that begins with `c`, '&' or '%', which is the character in hand; any
    // other value is returned as it came. Returns the next character to be processed: the value of
    // a character reference, in which case the flag that `isCharRef` may point to is set, or the
    // first character of an entity's text, or what follows a reference that stands for nothing.
    // Leaves no trace in the token.
    int read_reference(int c, bool* isCharRef);

    // The file of an external entity or subset. Where it can't be opened there is a warning and
    // null is returned.
    std::unique_ptr<ByteStream> open_external(const Unit* systemId);

private:
    [[noreturn]] void reference_error(const char* message, std::size_t start) const;
    int read_and_append();
    int read_character_reference(std::size_t start);
    void read_entity_name(std::size_t start, const char* unterminated);
    int first_character_of(const Unit* name, std::size_t start);
    int read_general_reference(std::size_t start, bool* isCharRef);
    int read_parameter_reference(std::size_t start);
    void push_entity(const Unit* name);
    void push_external(const EntityRecord& entity);

    Input& input;
    TokenBuffer& token;
    Declarations& dtd;
    const ScannerErrors& errors;
    bool externalFiles;
};

}  // namespace qvox

// The encodings that `qvox convert` writes.
#pragma once

#include <string>
#include <vector>

#include "units.h"

struct TargetEncoding {
    const char* name;
    // The parsers take a document for UTF-8 that neither names it nor has a byte order mark.
    bool mustBeDeclared;
    // Whether a reference takes the place of a character that the parsers wouldn't read, wherever
    // one may stand. Elsewhere the user has to decide about such characters.
    bool usesReferences;
    // What is said of characters that are left to the user.
    const char* lack;
    // Whether the character can be written and read as itself.
    bool (*takes)(char32_t character);
    // The bytes of a whole document.
    std::string (*encode)(const Units& text);
};

std::vector<std::string> target_encoding_names();

// Of one of these names, in any case.
const TargetEncoding& target_encoding(const std::string& name);

// The value of a token, as the lexer makes it and the grammar passes it on.
#pragma once

#include "text/wide.h"

namespace qvox {

struct Name;

union TokenValue {
    const Unit* text;  // of most tokens
    Unit* value;       // of an attribute, which is normalised in place
    Name* name;        // of a NAME
};

}  // namespace qvox

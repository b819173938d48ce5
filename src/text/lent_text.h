// How the library lends a text to a string of its own, such as one that lies behind its node. To
// everybody else that string is an ordinary one.
#pragma once

#include <qvox/xstring.h>

#include "text/wide.h"

namespace qvox {

struct LentText {
    const Unit* units;  // followed by a NUL, without one inside; outlives the string
    int length;

    // Only as the initialiser of the string that borrows: what is copied or moved out of that owns
    // its text.
    Xstring string() const noexcept { return {units, length, Xstring::State::LENT}; }
};

}  // namespace qvox

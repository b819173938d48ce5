// How the library lends a text to a string of its own, such as one that lies behind its node or is
// handed to a handler. To everybody else that string is an ordinary one.
#pragma once

#include <limits>
#include <stdexcept>

#include <qvox/xstring.h>

#include "text/wide.h"

namespace qvox {

struct LentText {
    const Unit* units;  // followed by a NUL, without one inside; outlives the string. Or null.
    int length;

    // Only as the initialiser of the string that borrows: what is copied or moved out of that owns
    // its text.
    Xstring string() const noexcept {
        return units != nullptr ? Xstring(units, length, Xstring::State::LENT) : Xstring();
    }
};

// A text of that length, which has to be one that a string can tell.
inline LentText lent_text(const Unit* text, std::size_t length) {
    if (length > static_cast<std::size_t>(std::numeric_limits<int>::max()) - 2) {
        throw std::length_error("text too long");
    }
    return {text, static_cast<int>(length)};
}

inline LentText lent_text(const Unit* text) {
    return lent_text(text, text != nullptr ? wide_length(text) : 0);
}

}  // namespace qvox

// The arguments of the tree's public operations.
#pragma once

#include <qvox/dom.h>

#include "text/char_classes.h"
#include "text/wide.h"

namespace qvox {

// The units of a text, or null for a null string.
inline const Unit* units_of(const Xstring& s) { return s.isNull() ? nullptr : s.data(); }

// DOMException INVALID_CHARACTER_ERR for what is no name; the empty string passes.
inline void check_name(const Xstring& name, const char* message) {
    if (!isName(name.data())) throw DOMException(DOMException::INVALID_CHARACTER_ERR, message);
}

}  // namespace qvox

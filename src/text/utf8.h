// UTF-8 and 16-bit units, for texts that are not documents: anything goes in, and what is wrong
// becomes U+FFFD.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/wide.h"

namespace qvox {

// Writes the units of `utf8` to `out`, which may be null, and says how many they are: at most one a
// byte. Each byte that is not part of a character, in the shortest form of that, is one U+FFFD.
std::size_t utf8_to_units(std::string_view utf8, Unit* out);

// Half of a surrogate pair alone becomes U+FFFD.
std::string units_to_utf8(const Unit* units, std::size_t count);

}  // namespace qvox

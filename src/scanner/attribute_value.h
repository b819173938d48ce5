// The normalisation of attribute values.
#pragma once

#include "text/wide.h"

namespace qvox {

// Normalises a value in place (XML 1.0, attribute-value normalisation). `type` is null for an
// attribute without declaration. Returns the length of what comes of it.
std::size_t normalize_att_value(const Unit* type, Unit* value);

// Whether values of the type keep all their blanks. A value without other white space is normalised
// then.
bool is_cdata(const Unit* type);

}  // namespace qvox

// The normalisation of attribute values.
#pragma once

#include "text/wide.h"

namespace qvox {

// Normalises a value in place (XML 1.0, attribute-value normalisation). `type` is null for an
// attribute without declaration.
void normalize_att_value(const Unit* type, Unit* value);

}  // namespace qvox

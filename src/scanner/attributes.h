// The attributes of a start tag: their declarations, defaults and normalisation.
#pragma once

#include "scanner/document_actions.h"

namespace qvox {

// Links the attributes of the tag with their definitions, and appends the defaults of those that
// don't stand in it.
void apply_declaration(TagRecord& tag, const ElementRecord& declaration);

// Normalises and resolves the attributes, and drops the namespace declarations unless the options
// keep them.
void finish_attributes(TagRecord& tag, NamespaceOptions options);

// Normalises a value in place (XML 1.0, attribute-value normalisation). `type` is null for an
// attribute without declaration.
void normalize_att_value(const Unit* type, Unit* value);

}  // namespace qvox

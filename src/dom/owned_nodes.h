// What a node owns beside its children depends on its type; destruction has to find all of it.
#pragma once

#include "dom/collection.h"

namespace qvox {

// A collection of the node's that isn't empty, or null: its children, an element's attributes, a
// document type's entities, notations and declarations, the definitions of an attribute-list
// declaration.
NodeCollection* owned_nodes_of(Node& node);

}  // namespace qvox

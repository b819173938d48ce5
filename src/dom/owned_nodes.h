// What a node owns beside its children depends on its type; destruction has to find all of it.
#pragma once

#include <qvox/dom.h>

namespace qvox {

// A node that the node owns, or null: of its children, an element's attributes, a document type's
// entities, notations and declarations, the definitions of an attribute-list declaration.
Node* first_owned_of(const Node& owner);

}  // namespace qvox

// Copies of nodes.
#pragma once

#include <qvox/dom.h>

namespace qvox {

class AttrImpl;

// A copy of one node, without its children, for the document `target`. A node of a type that has no
// copy of its own answers itself.
Node* cloneShallow(Node* source, Document* target);

// A copy of the node and, with `deep`, of all that is below it. With a `target` the copies belong
// to that document, else each to its source's.
Node* copy_tree(Node* source, bool deep, Document* target);

// A copy of an attribute.
AttrImpl* copy_attribute(const AttrImpl& source, Document* target);

}  // namespace qvox

// Steps in document order, bound to no root.
#pragma once

#include <qvox/dom.h>

namespace qvox {

// The node whose opening follows, or null behind the last one of the tree.
Node* documentNext(const Node* node);
// The node whose opening precedes, or null in front of the topmost one.
Node* documentPrevious(const Node* node);

}  // namespace qvox

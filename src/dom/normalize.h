#pragma once

#include <qvox/dom.h>

namespace qvox {

// Joins Text nodes that stand side by side, here and in everything below.
void normalize_tree(Node* root);

}  // namespace qvox

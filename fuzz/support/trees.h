// Trees held against the rules that all trees keep, and against each other.
#pragma once

#include <functional>
#include <string>

#include <qvox/qvox.h>

namespace qvox_fuzz {

// Calls `visit` for the node and all that hangs from it, in document order: children, attributes,
// entities and notations. Depth costs no stack.
void for_each_node(qvox::Node* root, const std::function<void(qvox::Node*)>& visit);

// Insists on the links of the node and of all that hangs from it, and reads every text of them.
void check_tree(qvox::Node* root);

// The node and its descendants, with everything that can be read of them, as a text.
std::string shown(qvox::Node* root);

}  // namespace qvox_fuzz

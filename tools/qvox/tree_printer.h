// The nodes of a tree, one a line.
//
// A line is the type of the node and what it holds, each with its name, as the node interfaces have
// them: `element name="d:a" namespaceURI="urn:example:d" localName="a"`. A text stands in quotes,
// and null is the bare word. What belongs to a node follows in deeper lines: the attributes of an
// element, the last word `defaulted` where the document type supplied them; the entities, notations
// and declarations of a document type; then the children. The text of the declarations is shown a
// line of it a line, since it can't be told where one ends.
//
// Far down the indent stays as it is and the level stands in front, as in `(33) element`: the
// output grows with the number of nodes, however deep they lie.
#pragma once

#include <cstddef>

#include <qvox/qvox.h>

#include "output.h"

constexpr std::size_t DEEPEST_INDENT = 32;  // levels

// Prints the node and all below it, without the disguise of that mark (utf8_source.h). Lets
// WriteError through.
void print_tree(qvox::Node* root, Output& output, unsigned short mark = 0);

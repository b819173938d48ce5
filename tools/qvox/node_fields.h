// What the nodes of each type hold, by the names of the node interfaces.
#pragma once

#include <array>

#include <qvox/qvox.h>

struct NodeField {
    const char* name = nullptr;
    const qvox::Xstring& (*get)(const qvox::Node& node) = nullptr;
};

struct NodeForm {
    const char* type;
    std::array<NodeField, 4> fields;  // the last ones without name
};

const NodeForm& form_of(const qvox::Node& node);

// Whether the document type has supplied the node.
bool is_defaulted(const qvox::Node& node);

// The parse of one document into a tree.
#pragma once

#include <memory>
#include <string>

#include <qvox/qvox.h>

#include "document.h"

struct FreeDocument {
    void operator()(qvox::Document* document) const;
};

using OwnedDocument = std::unique_ptr<qvox::Document, FreeDocument>;

// Parses the file of exactly this name. Null where that fails; what went wrong is in `failure`
// then.
OwnedDocument parse_tree(qvox::DOMParser& parser, const std::string& fileName, Failure& failure);

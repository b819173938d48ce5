// A document as the library writes it into memory, apart from its XML declaration.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <qvox/qvox.h>

#include "document.h"
#include "tree_parse.h"
#include "units.h"

struct XmlDeclaration {
    std::string version;
    std::string standalone;  // empty where it isn't declared
};

// For each element in document order how many of its attributes the document itself specifies.
// These come first; the document type supplies the others. Empty where that isn't known.
using SpecifiedAttributes = std::vector<unsigned>;

SpecifiedAttributes specified_attributes(qvox::Document& document);

struct WrittenDocument {
    OwnedDocument tree;  // without the declaration
    std::optional<XmlDeclaration> declaration;
    Units body;  // all but the declaration
};

// Reads the file of exactly this name. Nothing where that fails; what went wrong is in `failure`
// then.
std::optional<WrittenDocument> read_and_write(const std::string& fileName, Failure& failure);

// A document as the library writes it into memory, apart from its XML declaration.
#pragma once

#include <optional>
#include <string>

#include <qvox/qvox.h>

#include "document.h"
#include "units.h"

struct XmlDeclaration {
    std::string version;
    std::string standalone;  // empty where it isn't declared
};

struct WrittenDocument {
    std::optional<XmlDeclaration> declaration;
    Units body;  // all but the declaration
};

// Reads the file of exactly this name. Nothing where that fails; what went wrong is in `failure`
// then.
std::optional<WrittenDocument> read_and_write(const std::string& fileName, Failure& failure);

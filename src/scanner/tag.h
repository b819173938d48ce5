// A start tag with its attributes and namespace declarations.
#pragma once

#include "scanner/dtd_actions.h"
#include "scanner/heap_array.h"
#include "text/wide.h"

namespace qvox {

struct AttributeRecord {
    const AttDefRecord* decl;  // the attribute's declaration or null
    const Unit* uri;           // or null
    const Unit* localName;     // or null
    const Unit* qName;         // the name as written
    Unit* value;               // normalised in place
    bool isNamespaceDecl;      // "xmlns" or "xmlns:..."
    bool specified;            // false for a default
};

struct TagRecord;

// A namespace declaration.
struct PrefixMapping {
    const Unit* prefix;  // null for the default namespace
    const Unit* uri;
    const TagRecord* tag;     // the tag that it stands on
    PrefixMapping* shadowed;  // what the prefix stood for outside, while this is in force
    bool inForce;             // not so for a second declaration of a prefix in one tag
};

// A start tag or empty-element tag, on the parse heap. Its strings are the token values; those of
// the attributes are there until the next start tag begins.
struct TagRecord {
    const Unit* uri;        // or null
    const Unit* localName;  // null while namespaces are off
    const Unit* qName;      // the name as written
    HeapArray<AttributeRecord> attributes;
    HeapArray<PrefixMapping> prefixMappings;
};

// What the features of the parser ask of a parse.
struct NamespaceOptions {
    bool namespaces;  // resolve names and report mappings
    bool prefixes;    // leave xmlns attributes among the attributes
};

}  // namespace qvox

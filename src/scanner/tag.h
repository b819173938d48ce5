// A start tag with its attributes and namespace declarations.
#pragma once

#include "scanner/dtd_actions.h"
#include "scanner/heap_array.h"
#include "scanner/names.h"
#include "text/wide.h"

namespace qvox {

struct AttributeRecord {
    const AttDefRecord* decl;  // the attribute's declaration or null
    const Name* uri;           // or null
    const Name* localName;     // or null
    Name* qName;               // the name as written
    Unit* value;               // normalised in place
    std::size_t length;        // of the value, in units
    bool isLent;               // a value that needs no change and may not be changed
    bool isNamespaceDecl;      // "xmlns" or "xmlns:..."
    bool specified;            // false for a default
};

struct TagRecord;

// A namespace declaration.
struct PrefixMapping {
    Name* prefix;           // null for the default namespace
    std::size_t attribute;  // whose value, once it is normalised, is the URI
    const Name* uri;
    const TagRecord* tag;     // the tag that it stands on
    PrefixMapping* shadowed;  // what the prefix stood for outside, while this is in force
    bool inForce;             // not so for a second declaration of a prefix in one tag
};

// A start tag or empty-element tag, on the parse heap. The values of its attributes are there until
// the next start tag begins.
struct TagRecord {
    const Name* uri;        // or null
    const Name* localName;  // null while namespaces are off
    Name* qName;            // the name as written
    HeapArray<AttributeRecord> attributes;
    HeapArray<PrefixMapping> prefixMappings;
};

// What the features of the parser ask of a parse.
struct NamespaceOptions {
    bool namespaces;  // resolve names and report mappings
    bool prefixes;    // leave xmlns attributes among the attributes
};

}  // namespace qvox

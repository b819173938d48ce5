// What the grammar does between the tags: the stack of open tags, and the making of a start tag
// with its attributes, defaults and namespaces.
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

// The record that the next reduction works on: the start tag being read, else the innermost open
// element, else null. Written here only.
extern TagRecord* currentTag;

// What the features of the parser ask of a parse.
struct NamespaceOptions {
    bool namespaces;  // resolve names and report mappings
    bool prefixes;    // leave xmlns attributes among the attributes
};

// Ready for a document; and the end of it, also in the middle of a failure. With `accepted`, open
// tags are an internal error.
void actions_init(NamespaceOptions options);
void actions_end(bool accepted);

// The lexer has met the '<' of a start tag.
void begin_tag(int token);

// A copy of an attribute's value that lasts until the next start tag begins.
Unit* copy_for_tag(const Unit* text, std::size_t length);

// An attribute of the current tag. The value is taken over.
void add_attribute(const Unit* qName, Unit* value, bool specified);

// The last attribute has been read: the tag is opened, its names resolved, its attributes completed
// and normalised.
void process_start_tag(const Unit* qName);

// Closes the innermost tag. A name that isn't the start tag's is an error.
void end_tag(const Unit* qName);

}  // namespace qvox

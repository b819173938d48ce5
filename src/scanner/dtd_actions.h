// The tables that the declarations of a document type fill for the parse itself: elements with
// their attributes, for defaults and normalisation, and entities, for references.
#pragma once

#include <map>
#include <vector>

#include "platform/byte_stream.h"
#include "text/wide.h"

namespace qvox {

// The strings of all records live on the parse heap.
struct AttDefRecord {
    const Unit* name;
    const Unit* type;
    const Unit* mode;           // "#REQUIRED", "#IMPLIED", "#FIXED", or null for a plain default
    const Unit* value;          // default value as declared, or null
    Unit* normalized;           // the same as attributes have it, made at its first use
    AttDefRecord* firstOfName;  // the first definition of this name on the element, which counts
    unsigned long seenInTag;    // number of the start tag that last had an attribute of this name
};

struct ElementRecord {
    const Unit* name;
    const Unit* model;  // text of the content model; null if only attributes were declared
    std::vector<AttDefRecord*> attDefs;  // in order of declaration
    std::map<const Unit*, AttDefRecord*, WideLess> firstByName;
};

struct EntityRecord {
    const Unit* name;      // a parameter entity's begins with '%'
    const Unit* value;     // replacement text of an internal entity, or null
    const Unit* publicId;  // or null
    const Unit* systemId;  // or null
    const Unit* notation;  // or null
};

// Empty tables but for the five predefined entities, and no tables.
void dtd_tables_create();
void dtd_tables_destroy();

// The record of exactly this name, or null.
ElementRecord* find_element_decl(const Unit* name);
EntityRecord* find_entity_decl(const Unit* name);
// The first definition of exactly this name, or null.
AttDefRecord* find_att_def(const ElementRecord& element, const Unit* name);

// Enters an element. A declaration of a name that is there already is a warning and changes nothing
// but a model that was missing; an implicit entry comes from an attribute-list declaration.
ElementRecord* register_element_decl(const Unit* name, const Unit* model, bool implicit);

// The element that the definitions of an attribute-list declaration go to. Entered if need be.
ElementRecord* begin_attlist(const Unit* elementName);

// Appends a definition to the element of the attribute-list declaration in progress.
void add_att_def(const Unit* name, const Unit* type, const Unit* mode, const Unit* value);

// Whether this file was read as an external entity before in this parse; it is from now on.
bool was_read_before(const ByteStream& file);

// Enters an entity. The first declaration of a name binds; a further one is a warning.
EntityRecord* register_entity_decl(const Unit* name, const Unit* value, const Unit* publicId,
                                   const Unit* systemId, const Unit* notation);

}  // namespace qvox

// What the declarations of a document type leave for the parse itself: elements with their
// attributes, for defaults and normalisation, and entities, for references.
#pragma once

#include <forward_list>
#include <map>
#include <set>
#include <vector>

#include "input/expansion.h"
#include "platform/byte_stream.h"
#include "runtime/heap.h"
#include "scanner/names.h"
#include "text/wide.h"

namespace qvox {

// The strings of all records live on the parse heap.
struct AttDefRecord {
    Name* name;
    const Name* type;
    const Unit* mode;           // "#REQUIRED", "#IMPLIED", "#FIXED", or null for a plain default
    const Unit* value;          // default value as declared, or null
    Unit* normalized;           // the same as attributes have it, or null
    AttDefRecord* firstOfName;  // the first definition of this name on the element, which counts
    unsigned long seenInTag;    // number of the start tag that last had an attribute of this name
};

struct ElementRecord {
    const Unit* model =
        nullptr;  // text of the content model; null if only attributes were declared
    std::vector<AttDefRecord*> attDefs;   // in order of declaration
    std::vector<AttDefRecord*> defaults;  // those of them with a value
    std::map<const Name*, AttDefRecord*> firstByName;
    Amount repetition = 0;  // what it counts for to report all of attDefs again
};

struct PlainEntity;

struct EntityRecord {
    const Unit* name;      // a parameter entity's begins with '%'
    const Unit* value;     // replacement text of an internal entity, or null
    const Unit* publicId;  // or null
    const Unit* systemId;  // or null
    const Unit* notation;  // or null

    // What PlainEntities keeps here.
    const PlainEntity* plain = nullptr;
    bool wasLookedAt = false;
};

class Declarations {
public:
    // Nothing is declared but the five predefined entities.
    Declarations(Heap& parseHeap, Expansion& expansionOfParse, Names& namesOfParse);
    Declarations(const Declarations&) = delete;
    Declarations& operator=(const Declarations&) = delete;

    // The record of the entity of exactly this name, or null. It is with the name, like that of an
    // element.
    EntityRecord* find_entity_decl(const Unit* name);

    // Enters an element. A declaration of a name that is there already is a warning and changes
    // nothing but a model that was missing.
    void register_element_decl(Name& name, const Unit* model);

    // The element that the definitions of an attribute-list declaration go to. Entered if need be.
    ElementRecord* begin_attlist(Name& elementName);

    // Appends a definition to the element of the attribute-list declaration in progress.
    void add_att_def(Name& name, const Unit* type, const Unit* mode, const Unit* value);

    // Enters an entity. The first declaration of a name binds; a further one is a warning.
    void register_entity_decl(const EntityRecord& entity);

    // Whether this file was read as an external entity before in this parse; it is from now on.
    bool was_read_before(const ByteStream& file);

private:
    Declared& declared(Name& name);
    ElementRecord& enter_element(Name& name);
    void warn_registered(const char* kind, const Unit* name);

    Heap& heap;
    Expansion& expansion;
    Names& names;
    std::forward_list<ElementRecord> elementTable;  // a record stays where it is
    std::set<ReadableFile::Identity> readFiles;
    ElementRecord* currentElementDecl = nullptr;
};

// The first definition of exactly this name, or null.
AttDefRecord* find_att_def(const ElementRecord& element, const Name& name);

}  // namespace qvox

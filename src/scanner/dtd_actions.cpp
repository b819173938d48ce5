#include "scanner/dtd_actions.h"

#include <cstring>

#include "runtime/report.h"
#include "scanner/attribute_value.h"
#include "text/temporaries.h"

namespace qvox {

namespace {

struct PredefinedEntity {
    Unit name[5];
    Unit value[7];  // a character reference, so that the character is text and never markup
};

constexpr PredefinedEntity PREDEFINED_ENTITIES[] = {
    {{'l', 't'}, {'&', '#', 'x', '3', 'c', ';'}},
    {{'g', 't'}, {'&', '#', 'x', '3', 'e', ';'}},
    {{'a', 'm', 'p'}, {'&', '#', 'x', '2', '6', ';'}},
    {{'a', 'p', 'o', 's'}, {'&', '#', 'x', '2', '7', ';'}},
    {{'q', 'u', 'o', 't'}, {'&', '#', 'x', '2', '2', ';'}},
};

Amount length_of(const Unit* text) { return text != nullptr ? wide_length(text) : 0; }

}  // namespace

Declarations::Declarations(Heap& parseHeap, Expansion& expansionOfParse, Names& namesOfParse)
    : heap(parseHeap), expansion(expansionOfParse), names(namesOfParse) {
    for (const PredefinedEntity& entity : PREDEFINED_ENTITIES) {
        register_entity_decl({entity.name, entity.value, nullptr, nullptr, nullptr});
    }
}

EntityRecord* Declarations::find_entity_decl(const Unit* name) {
    const Name* known = names.known(name, wide_length(name));
    return known != nullptr ? known->entity() : nullptr;
}

AttDefRecord* find_att_def(const ElementRecord& element, const Name& name) {
    const auto found = element.firstByName.find(&name);
    return found != element.firstByName.end() ? found->second : nullptr;
}

void Declarations::register_element_decl(Name& name, const Unit* model) {
    if (name.element() != nullptr) {
        warn_registered("element", name.units());
    } else {
        enter_element(name);
    }
    ElementRecord& element = *name.element();
    if (element.model == nullptr) element.model = model;
}

Declared& Declarations::declared(Name& name) {
    if (name.declared == nullptr) name.declared = heap.halloc_record<Declared>();
    return *name.declared;
}

ElementRecord& Declarations::enter_element(Name& name) {
    return *(declared(name).element = &elementTable.emplace_front());
}

ElementRecord* Declarations::begin_attlist(Name& elementName) {
    currentElementDecl =
        elementName.element() != nullptr ? elementName.element() : &enter_element(elementName);
    expansion.count(currentElementDecl->repetition);
    return currentElementDecl;
}

void Declarations::add_att_def(Name& name, const Unit* type, const Unit* mode, const Unit* value) {
    ElementRecord& element = *currentElementDecl;
    auto* definition = heap.halloc_record<AttDefRecord>();
    definition->name = &name;
    definition->type = &names.keep(type, wide_length(type));
    definition->mode = mode;
    definition->value = value;
    definition->firstOfName = element.firstByName.emplace(&name, definition).first->second;
    element.attDefs.push_back(definition);
    if (value != nullptr) {
        definition->normalized = heap.halloc_copy(value, wide_length(value));
        normalize_att_value(definition->firstOfName->type->units(), definition->normalized);
        element.defaults.push_back(definition);
    }
    element.repetition +=
        weight::REPEATED_DEFINITION + length_of(name.units()) + length_of(type) + length_of(value);
}

void Declarations::register_entity_decl(const EntityRecord& entity) {
    Name& name = names.keep(entity.name, wide_length(entity.name));
    if (name.entity() != nullptr) {
        warn_registered("entity", entity.name);
    } else {
        declared(name).entity = heap.halloc_record<EntityRecord>(entity);
    }
}

void Declarations::warn_registered(const char* kind, const Unit* name) {
    expansion.count(weight::WARNING);
    qvox_report(REPORT_WARNING, 0, "%s decl name (%s) already registered", kind,
                OsTemp(name).get());
}

bool Declarations::was_read_before(const ByteStream& file) {
    return !readFiles.insert(file.identity()).second;
}

}  // namespace qvox

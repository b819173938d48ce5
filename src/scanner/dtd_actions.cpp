#include "scanner/dtd_actions.h"

#include <cstring>

#include "runtime/report.h"
#include "scanner/attribute_value.h"
#include "text/temporaries.h"

namespace qvox {

namespace {

struct PredefinedEntity {
    const char* name;
    const char* value;  // a character reference, so that the character is text and never markup
};

constexpr PredefinedEntity PREDEFINED_ENTITIES[] = {
    {"lt", "&#x3c;"}, {"gt", "&#x3e;"}, {"amp", "&#x26;"}, {"apos", "&#x27;"}, {"quot", "&#x22;"},
};

Unit* widen(Heap& heap, const char* ascii) {
    return wide_from_narrow(heap.halloc_text(std::strlen(ascii)), ascii);
}

Amount length_of(const Unit* text) { return text != nullptr ? wide_length(text) : 0; }

}  // namespace

Declarations::Declarations(Heap& parseHeap, Expansion& expansionOfParse)
    : heap(parseHeap), expansion(expansionOfParse) {
    for (const PredefinedEntity& entity : PREDEFINED_ENTITIES) {
        register_entity_decl(
            {widen(heap, entity.name), widen(heap, entity.value), nullptr, nullptr, nullptr});
    }
}

ElementRecord* Declarations::find_element_decl(const Unit* name) {
    const auto found = elementTable.find(name);
    return found != elementTable.end() ? &found->second : nullptr;
}

EntityRecord* Declarations::find_entity_decl(const Unit* name) {
    const auto found = entityTable.find(name);
    return found != entityTable.end() ? &found->second : nullptr;
}

AttDefRecord* find_att_def(const ElementRecord& element, const Unit* name) {
    const auto found = element.firstByName.find(name);
    return found != element.firstByName.end() ? found->second : nullptr;
}

ElementRecord* Declarations::register_element_decl(const Unit* name, const Unit* model) {
    ElementRecord* known = find_element_decl(name);
    if (known == nullptr) return enter_element(name, model);
    warn_registered("element", name);
    if (known->model == nullptr) known->model = model;
    return known;
}

ElementRecord* Declarations::enter_element(const Unit* name, const Unit* model) {
    ElementRecord& entered = elementTable[name];
    entered.name = name;
    entered.model = model;
    return &entered;
}

ElementRecord* Declarations::begin_attlist(const Unit* elementName) {
    currentElementDecl = find_element_decl(elementName);
    if (currentElementDecl == nullptr) currentElementDecl = enter_element(elementName, nullptr);
    expansion.count(currentElementDecl->repetition);
    return currentElementDecl;
}

void Declarations::add_att_def(const Unit* name, const Unit* type, const Unit* mode,
                               const Unit* value) {
    ElementRecord& element = *currentElementDecl;
    auto* definition = heap.halloc_record<AttDefRecord>();
    definition->name = name;
    definition->type = type;
    definition->mode = mode;
    definition->value = value;
    definition->firstOfName = element.firstByName.emplace(name, definition).first->second;
    element.attDefs.push_back(definition);
    if (value != nullptr) {
        definition->normalized = heap.halloc_copy(value, wide_length(value));
        normalize_att_value(definition->firstOfName->type, definition->normalized);
        element.defaults.push_back(definition);
    }
    element.repetition +=
        weight::REPEATED_DEFINITION + wide_length(name) + wide_length(type) + length_of(value);
}

void Declarations::register_entity_decl(const EntityRecord& entity) {
    if (!entityTable.emplace(entity.name, entity).second) warn_registered("entity", entity.name);
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

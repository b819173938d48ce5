#include "scanner/dtd_actions.h"

#include <cstring>
#include <set>

#include "input/expansion.h"
#include "runtime/heap.h"
#include "runtime/report.h"
#include "text/temporaries.h"

namespace qvox {

namespace {

// Each attribute-list declaration reports the definitions of the earlier ones for the same element
// again, and a tree keeps them: this is what one of them counts for.
constexpr unsigned long long REPEATED_DEFINITION_EXPANSION = 64;

struct PredefinedEntity {
    const char* name;
    const char* value;  // a character reference, so that the character is text and never markup
};

constexpr PredefinedEntity PREDEFINED_ENTITIES[] = {
    {"lt", "&#x3c;"}, {"gt", "&#x3e;"}, {"amp", "&#x26;"}, {"apos", "&#x27;"}, {"quot", "&#x22;"},
};

std::map<const Unit*, ElementRecord, WideLess> elementTable;
std::map<const Unit*, EntityRecord, WideLess> entityTable;
std::set<ByteStream::Identity> readFiles;
ElementRecord* currentElementDecl = nullptr;

Unit* widen(const char* ascii) {
    return wide_from_narrow(halloc_text(parseHeap, std::strlen(ascii)), ascii);
}

void warn_registered(const char* kind, const Unit* name) {
    qvox_report(REPORT_WARNING, 0, "%s decl name (%s) already registered", kind,
                OsTemp(name).get());
}

}  // namespace

void dtd_tables_create() {
    dtd_tables_destroy();
    for (const PredefinedEntity& entity : PREDEFINED_ENTITIES) {
        register_entity_decl(widen(entity.name), widen(entity.value), nullptr, nullptr, nullptr);
    }
}

void dtd_tables_destroy() {
    elementTable.clear();
    entityTable.clear();
    readFiles.clear();
    currentElementDecl = nullptr;
}

ElementRecord* find_element_decl(const Unit* name) {
    const auto found = elementTable.find(name);
    return found != elementTable.end() ? &found->second : nullptr;
}

EntityRecord* find_entity_decl(const Unit* name) {
    const auto found = entityTable.find(name);
    return found != entityTable.end() ? &found->second : nullptr;
}

AttDefRecord* find_att_def(const ElementRecord& element, const Unit* name) {
    const auto found = element.firstByName.find(name);
    return found != element.firstByName.end() ? found->second : nullptr;
}

ElementRecord* register_element_decl(const Unit* name, const Unit* model, bool implicit) {
    ElementRecord* known = implicit ? nullptr : find_element_decl(name);
    if (known != nullptr) {
        warn_registered("element", name);
        if (known->model == nullptr) known->model = model;
        return known;
    }
    ElementRecord& entered = elementTable[name];
    entered.name = name;
    entered.model = model;
    return &entered;
}

ElementRecord* begin_attlist(const Unit* elementName) {
    currentElementDecl = find_element_decl(elementName);
    if (currentElementDecl == nullptr) {
        currentElementDecl = register_element_decl(elementName, nullptr, true);
    }
    count_expanded(REPEATED_DEFINITION_EXPANSION * currentElementDecl->attDefs.size());
    return currentElementDecl;
}

void add_att_def(const Unit* name, const Unit* type, const Unit* mode, const Unit* value) {
    auto* definition = halloc_record<AttDefRecord>(parseHeap);
    definition->name = name;
    definition->type = type;
    definition->mode = mode;
    definition->value = value;
    definition->firstOfName =
        currentElementDecl->firstByName.emplace(name, definition).first->second;
    currentElementDecl->attDefs.push_back(definition);
}

bool was_read_before(const ByteStream& file) { return !readFiles.insert(file.identity()).second; }

EntityRecord* register_entity_decl(const Unit* name, const Unit* value, const Unit* publicId,
                                   const Unit* systemId, const Unit* notation) {
    EntityRecord* known = find_entity_decl(name);
    if (known != nullptr) {
        warn_registered("entity", name);
        return known;
    }
    return &entityTable.emplace(name, EntityRecord{name, value, publicId, systemId, notation})
                .first->second;
}

}  // namespace qvox

#include "scanner/grammar.h"

namespace qvox {

namespace {

constexpr Unit PERCENT[] = {'%', 0};

}  // namespace

void Grammar::declare_element(Name& name, const Unit* model) {
    dtd.register_element_decl(name, model);
    events.ev_element_decl(name.units(), model);
}

void Grammar::declare_internal_entity(const Unit* name, const Unit* value) {
    dtd.register_entity_decl({name, value, nullptr, nullptr, nullptr});
    events.ev_internal_entity_decl(name, value);
}

void Grammar::declare_external_entity(const Unit* name, const ExternalId& id,
                                      const Unit* notation) {
    dtd.register_entity_decl({name, nullptr, id.publicId, id.systemId, notation});
    events.ev_external_entity_decl(name, id.publicId, id.systemId, notation);
}

// A parameter entity is known by its name behind a '%'.
void Grammar::declare_parameter_entity(const Unit* bareName, const ParameterEntityDef& definition) {
    const Unit* name = values.flatten(values.join({PERCENT, bareName}));
    if (definition.value != nullptr) {
        declare_internal_entity(name, definition.value);
    } else {
        declare_external_entity(name, *definition.external, nullptr);
    }
}

}  // namespace qvox

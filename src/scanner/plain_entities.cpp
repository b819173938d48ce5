#include "scanner/plain_entities.h"

#include "scanner/char_reference.h"
#include "scanner/token_buffer.h"

namespace qvox {

const PlainEntity* PlainEntities::find(Name& name) {
    EntityRecord* entity = name.entity();
    if (entity == nullptr || entity->value == nullptr) return nullptr;
    if (!entity->wasLookedAt) {
        entity->plain = make(*entity);
        entity->wasLookedAt = true;
    }
    return entity->plain;
}

const PlainEntity* PlainEntities::make(const EntityRecord& entity) {
    TokenBuffer text;
    bool hasQuotes = false;
    const Unit* next = entity.value;
    while (*next != 0) {
        if (*next == '<') return nullptr;
        if (*next != '&') {
            if (*next == '"' || *next == '\'') hasQuotes = true;
            text.append_unit(*next++);
            continue;
        }
        if (next[1] != '#') return nullptr;
        CharReference number;
        next += 2;
        while (number.take(*next)) ++next;
        if (*next != ';' || !number.is_character()) return nullptr;
        text.append_char(number.value());
        ++next;
    }
    auto* plain = heap.halloc_record<PlainEntity>();
    *plain = {entity.name, heap.halloc_copy(text.text(), text.length()), text.length(),
              static_cast<Amount>(next - entity.value), hasQuotes};
    return plain;
}

}  // namespace qvox

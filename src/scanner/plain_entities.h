// Entities whose text is nothing but text: no markup, and no reference but to characters. A
// reference to one can be replaced on the spot.
#pragma once

#include <cstddef>

#include "input/expansion.h"
#include "runtime/heap.h"
#include "scanner/dtd_actions.h"
#include "scanner/names.h"
#include "text/wide.h"

namespace qvox {

struct PlainEntity {
    const Unit* name;
    const Unit* text;  // with the characters that its references stand for
    std::size_t length;
    Amount units;    // of the text as it was declared
    bool hasQuotes;  // which would end a literal
};

class PlainEntities {
public:
    explicit PlainEntities(Heap& parseHeap) : heap(parseHeap) {}

    // The entity of that name; null where there is none, and where it isn't plain.
    const PlainEntity* find(Name& name);

private:
    const PlainEntity* make(const EntityRecord& entity);

    Heap& heap;
};

}  // namespace qvox

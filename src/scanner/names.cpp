#include "scanner/names.h"

#include <algorithm>
#include <new>

namespace qvox {

namespace {

constexpr Unit XMLNS[] = {'x', 'm', 'l', 'n', 's', 0};

}  // namespace

Names::Names(Heap& parseHeap)
    : heap(parseHeap), xmlnsName(&keep(XMLNS, sizeof XMLNS / sizeof XMLNS[0] - 1)) {}

Name& Names::keep(const Unit* text, std::size_t length) {
    const std::uint32_t hash = table.hash_of(text, length);
    Name* known = table.find(text, length, hash);
    return known != nullptr ? *known : enter(text, length, hash);
}

void Names::find_parts(Name& name) {
    const Unit* text = name.units();
    const Unit* colon = wide_find_unit(text, ':');
    if (colon == nullptr) {
        name.localPart = &name;
        return;
    }
    const auto prefixLength = static_cast<std::size_t>(colon - text);
    if (prefixLength != 0) name.prefix = &keep(text, prefixLength);
    const auto length = static_cast<std::size_t>(name.text.length());
    name.localPart = &keep(colon + 1, length - prefixLength - 1);
}

Name& Names::enter(const Unit* text, std::size_t length, std::uint32_t hash) {
    const std::size_t size = std::max(length + 1, Name::HEAD);
    void* const memory = heap.halloc_any(sizeof(Name) + size * sizeof(Unit), alignof(Name));
    auto* const copy = reinterpret_cast<Unit*>(static_cast<Name*>(memory) + 1);
    std::copy_n(text, length, copy);
    std::fill(copy + length, copy + size, Unit{0});
    auto* const name =
        new (memory) Name(lent_text(copy, length), hash, static_cast<std::uint32_t>(table.size()));
    table.enter(*name);
    return *name;
}

}  // namespace qvox

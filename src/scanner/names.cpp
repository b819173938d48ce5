#include "scanner/names.h"

#include <cstring>

namespace qvox {

namespace {

constexpr Unit XMLNS[] = {'x', 'm', 'l', 'n', 's', 0};

}  // namespace

Names::Names(Heap& parseHeap)
    : heap(parseHeap), xmlnsName(&keep_in_place(XMLNS, sizeof XMLNS / sizeof XMLNS[0] - 1)) {}

Name& Names::keep(const Unit* text, std::size_t length) {
    const std::uint32_t hash = table.hash_of(text, length);
    Name* known = table.find(text, length, hash);
    return known != nullptr ? *known : enter(heap.halloc_copy(text, length), length, hash);
}

Name& Names::keep_in_place(const Unit* text, std::size_t length) {
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
    name.localPart = &keep_in_place(colon + 1, length - prefixLength - 1);
}

Name& Names::enter(const Unit* keptText, std::size_t length, std::uint32_t hash) {
    Name& name = *new (heap.halloc(sizeof(Name), alignof(Name))) Name(
        lent_text(keptText, length), hash, static_cast<std::uint32_t>(table.size()));
    table.enter(name);
    return name;
}

}  // namespace qvox

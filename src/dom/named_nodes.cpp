#include "dom/named_nodes.h"

#include <algorithm>
#include <utility>

#include "dom/tree.h"

namespace qvox {

namespace {

// So many are searched faster than an index is made, and most elements have no more attributes.
constexpr std::size_t FEW = 16;

}  // namespace

void NamedNodes::put(const Unit* name, Node* node) {
    OwnedNode<Node> owned(node);
    entries.push_back({name, nullptr});
    Tree::destroy(takeEarlier());
    entries.back().node = owned.release();
}

// Takes out the node that has the name of the last entry.
Node* NamedNodes::takeEarlier() {
    const std::size_t last = entries.size() - 1;
    const Unit* name = entries[last].name;
    if (last < FEW) {
        const auto earlier = std::find_if(entries.begin(), entries.end() - 1, [name](Entry& entry) {
            return entry.node != nullptr && wide_compare(entry.name, name) == 0;
        });
        return std::exchange(earlier->node, nullptr);  // the last entry's is null, too
    }
    if (last == FEW) indexEarlier();
    const auto [place, isNew] = places.try_emplace(name, last);
    if (isNew) return nullptr;
    return std::exchange(entries[std::exchange(place->second, last)].node, nullptr);
}

void NamedNodes::indexEarlier() {
    for (std::size_t i = 0; i + 1 < entries.size(); ++i) {
        if (entries[i].node != nullptr) places.emplace(entries[i].name, i);
    }
}

void NamedNodes::moveTo(NamedNodeMapImpl& map) {
    for (const Entry& entry : entries) {
        if (entry.node != nullptr) map.add(entry.node);
    }
    clear();
}

void NamedNodes::destroyNodes() {
    for (const Entry& entry : entries) Tree::destroy(entry.node);
    clear();
}

void NamedNodes::clear() {
    entries.clear();
    places.clear();
}

}  // namespace qvox

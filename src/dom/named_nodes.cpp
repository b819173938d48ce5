#include "dom/named_nodes.h"

#include "dom/tree.h"

namespace qvox {

void NamedNodes::put(const Unit* name, Node* node) {
    OwnedNode<Node> owned(node);
    const std::size_t last = nodes.size();
    nodes.push_back(nullptr);
    const auto [entry, isNew] = places.try_emplace(name, last);
    if (!isNew) {
        Tree::destroy(nodes[entry->second]);
        nodes[entry->second] = nullptr;
        entry->second = last;
    }
    nodes[last] = owned.release();
}

void MapFiller::put(const Unit* name, Node* node) {
    if (hasFew) {
        Tree::destroy(map.putItem(node, false));
    } else {
        nodes.put(name, node);
    }
}

void NamedNodes::moveTo(NamedNodeMapImpl& map) {
    for (Node* node : nodes) {
        if (node != nullptr) map.append(node, NodeCollection::NO_PARENT);
    }
    nodes.clear();
    places.clear();
}

void NamedNodes::destroyNodes() {
    for (Node* node : nodes) Tree::destroy(node);
    nodes.clear();
    places.clear();
}

}  // namespace qvox

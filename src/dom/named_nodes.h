// Nodes by name on their way into a map, where a later one takes the place of an earlier one of its
// name and stands at the end. A map by itself would search all its nodes for each one.
#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include "dom/named_node_map.h"
#include "text/wide.h"

namespace qvox {

class NamedNodes {
public:
    NamedNodes() = default;
    NamedNodes(const NamedNodes&) = delete;
    NamedNodes& operator=(const NamedNodes&) = delete;
    ~NamedNodes() { destroyNodes(); }

    // Takes a node over. Its name must stay as it is until the nodes are given away.
    void put(const Unit* name, Node* node);
    bool isEmpty() const { return nodes.empty(); }
    // Gives all nodes to a map that has none of their names.
    void moveTo(NamedNodeMapImpl& map);
    void destroyNodes();

private:
    std::vector<Node*> nodes;  // null where one has been replaced
    std::map<const Unit*, std::size_t, WideLess> places;
};

// Fills a map with `count` nodes, of which the first few are searched for by the map itself: that
// is faster than an index, and most elements have no more.
class MapFiller {
public:
    MapFiller(NamedNodeMapImpl& filledMap, std::size_t count)
        : map(filledMap), hasFew(count <= FEW) {}
    MapFiller(const MapFiller&) = delete;
    MapFiller& operator=(const MapFiller&) = delete;

    // As NamedNodes has it.
    void put(const Unit* name, Node* node);
    // Behind the last node.
    void finish() { nodes.moveTo(map); }

private:
    static constexpr std::size_t FEW = 16;

    NamedNodeMapImpl& map;
    const bool hasFew;
    NamedNodes nodes;
};

}  // namespace qvox

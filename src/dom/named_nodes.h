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
    bool isEmpty() const { return entries.empty(); }
    // Gives all nodes to a map that has none of their names. The next ones can be put then.
    void moveTo(NamedNodeMapImpl& map);
    void destroyNodes();

private:
    struct Entry {
        const Unit* name;
        Node* node;  // null where it has been replaced
    };

    Node* takeEarlier();
    void indexEarlier();
    void clear();

    std::vector<Entry> entries;
    std::map<const Unit*, std::size_t, WideLess> places;  // of the entries, once they are many
};

}  // namespace qvox

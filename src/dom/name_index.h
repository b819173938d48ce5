// Nodes of a large map by their names, for searches. Several threads may search at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>

#include <qvox/dom.h>

#include "runtime/text_table.h"

namespace qvox {

class NameIndex {
public:
    // For the nodes of a chain.
    explicit NameIndex(Node* first);

    // The node of that name, or of that namespace and local name; null where there is none, and
    // nothing where there are several: which one is the first, the chain says.
    std::optional<Node*> find(const Xstring& name) const;
    std::optional<Node*> findNS(const Xstring& namespaceURI, const Xstring& localName) const;

    // A node has come, or goes.
    void comes(Node* node);
    void leaves(const Node* node);

private:
    // By the hash of what stands behind a name's first colon: both ways of searching know that.
    using Nodes = std::unordered_multimap<std::uint32_t, Node*>;

    std::uint32_t keyOf(const Xstring& name) const;
    template <typename IsWanted>
    std::optional<Node*> only(std::uint32_t key, IsWanted isWanted) const;

    TextHash hash;
    Nodes nodes;
};

}  // namespace qvox

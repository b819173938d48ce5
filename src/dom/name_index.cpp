#include "dom/name_index.h"

#include "dom/node_links.h"

namespace qvox {

NameIndex::NameIndex(Node* first) {
    for (Node* node = first; node != nullptr; node = NodeLinks::next(node)) comes(node);
}

std::uint32_t NameIndex::keyOf(const Xstring& name) const {
    const auto length = static_cast<std::size_t>(name.length());
    std::size_t start = 0;
    while (start < length && name.data()[start] != ':') ++start;
    start = start < length ? start + 1 : 0;
    return hash(name.data() + start, length - start);
}

template <typename IsWanted>
std::optional<Node*> NameIndex::only(std::uint32_t key, IsWanted isWanted) const {
    Node* found = nullptr;
    const auto [from, to] = nodes.equal_range(key);
    for (auto place = from; place != to; ++place) {
        if (!isWanted(place->second)) continue;
        if (found != nullptr) return std::nullopt;
        found = place->second;
    }
    return found;
}

std::optional<Node*> NameIndex::find(const Xstring& name) const {
    return only(keyOf(name), [&name](const Node* node) { return node->getNodeName() == name; });
}

std::optional<Node*> NameIndex::findNS(const Xstring& namespaceURI,
                                       const Xstring& localName) const {
    // Nodes that have no local name are asked for with none.
    if (localName.isNull()) return std::nullopt;
    const auto length = static_cast<std::size_t>(localName.length());
    return only(hash(localName.data(), length), [&](const Node* node) {
        return node->getNamespaceURI() == namespaceURI && node->getLocalName() == localName;
    });
}

void NameIndex::comes(Node* node) { nodes.emplace(keyOf(node->getNodeName()), node); }

void NameIndex::leaves(const Node* node) {
    const auto [from, to] = nodes.equal_range(keyOf(node->getNodeName()));
    auto place = from;
    while (place != to && place->second != node) ++place;
    if (place != to) nodes.erase(place);
}

}  // namespace qvox

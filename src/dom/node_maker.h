// Makes the nodes that a parsed document has most of: elements, attributes and texts. Each is one
// piece of NodeMemory, its text or attribute map with it, and names are looked up by their address
// first.
#pragma once

#include <cstddef>

#include "dom/attr.h"
#include "dom/element.h"
#include "dom/name_pool.h"
#include "dom/node_memory.h"

namespace qvox {

class DocumentImpl;

class NodeMaker {
public:
    explicit NodeMaker(DocumentImpl& nodesDocument) : document(nodesDocument) {}

    // The texts of names, namespaces, attribute types and default values must stay as they are
    // while the maker lives. What is made has no place yet.

    // With room for so many attributes.
    ElementImpl* element(const Unit* uri, const Unit* qualifiedName, std::size_t attributeCount);
    AttrImpl* attribute(const AttrImpl::Init& init);
    Node* text(const Unit* text);

private:
    struct KnownName {
        const Unit* text;
        const PooledName* name;
    };
    static constexpr std::size_t KNOWN_COUNT = 128;
    using KnownNames = KnownName[KNOWN_COUNT];  // by address

    const PooledName* pooled(const Unit* text);
    QualifiedName qualifiedName(const Unit* uri, const Unit* name);

    DocumentImpl& document;
    NodeMemory memory;
    KnownNames qualifiedNames = {};
    KnownNames otherNames = {};
};

}  // namespace qvox

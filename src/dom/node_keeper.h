// The nodes that operations have detached from the tree of a document and that nobody else would
// free. They die with that document; until then each can be put elsewhere or freed. Taking one and
// giving it up cost constant time.
#pragma once

#include "dom/collection.h"
#include "platform/lock.h"

namespace qvox {

class NodeKeeper final : private NodeCollection {
public:
    explicit NodeKeeper(Node* document) : NodeCollection(document) {}
    // Destroys what it has.
    ~NodeKeeper();

    // The keeper that has a kept node.
    static NodeKeeper& of(const Node* node);

    using NodeCollection::getOwner;

    // Takes over a node that has no place.
    void take(Node* node);
    // Lets go of one that it has, also one that is being destroyed.
    void giveUp(Node* node);

private:
    // An operation holds the lock of the node that it was called on, whose document may be another
    // one. Nobody takes a lock while he holds this one.
    Lock lock;
};

}  // namespace qvox

// The one structure behind child lists, attribute maps and all else that owns nodes: an ordered
// array of nodes. Each node knows the collection that has it and its place there, so that a node is
// never owned twice, a sibling is found in constant time without shared state, and both ends of the
// array give nodes up in constant time.
#pragma once

#include <cstddef>
#include <vector>

#include <qvox/dom.h>

namespace qvox {

class NodeCollection {
public:
    // What a node in the collection has as its parent.
    enum Parenthood { OWNER_IS_PARENT, NO_PARENT };

    explicit NodeCollection(Node* collectionOwner)
        : owner(collectionOwner), items(onlyItem), capacity(1) {}
    // With `count` slots that live as long as the collection and aren't its own; none of them is
    // used where the one inside is enough.
    NodeCollection(Node* collectionOwner, Node** slots, std::size_t count)
        : NodeCollection(collectionOwner) {
        if (count < 2) return;
        items = slots;
        capacity = static_cast<unsigned>(count);
    }
    NodeCollection(const NodeCollection&) = delete;
    NodeCollection& operator=(const NodeCollection&) = delete;

    // Destroys the nodes with all that they own, however deep that goes. Nobody owns a document:
    // one that stands here is let go.
    void destroyNodes();

    Node* getOwner() const { return owner; }
    std::size_t size() const { return last - first; }
    bool isEmpty() const { return last == first; }
    // Null where the index is out of range.
    Node* at(std::size_t index) const { return index < size() ? items[first + index] : nullptr; }
    Node* front() const { return isEmpty() ? nullptr : items[first]; }
    Node* back() const { return isEmpty() ? nullptr : items[last - 1]; }
    // Takes over nodes that have no place, behind those that are here.
    void appendAll(Node* const* nodes, std::size_t count, Parenthood parenthood);
    // Makes room for `count` nodes in all.
    void reserve(std::size_t count);
    bool holds(const Node* node) const;
    // The index of a node that the collection holds.
    std::size_t indexOf(const Node* node) const { return node->position - first; }

    // The neighbours of a node that the collection holds, or null.
    Node* after(const Node* node) const;
    Node* before(const Node* node) const;

    // Each takes the node out of the collection that has it so far. `ref` is in this one.
    void append(Node* node, Parenthood parenthood);
    void insertBefore(Node* node, const Node* ref, Parenthood parenthood);
    // The same for nodes that have no place.
    void insertAllBefore(Node* const* nodes, std::size_t count, const Node* ref,
                         Parenthood parenthood);
    // Puts `node` in the place of `old`, which is in this collection and leaves it.
    void replace(Node* node, Node* old, Parenthood parenthood);
    void remove(Node* node);
    // Takes out all nodes of `leaving`, which are here in their order, in one pass.
    void removeAll(const std::vector<Node*>& leaving);

    // Takes a node out of the collection that has it, if one has. An attribute then has no owner
    // element any more.
    static void release(Node* node);
    // The same for a node that is being destroyed, which is no longer of its own type.
    static void releaseDying(Node* node);

protected:
    enum Order { ORDERED, UNORDERED };

    // In an unordered one the last node takes the place of one that leaves.
    NodeCollection(Node* collectionOwner, Order order) : NodeCollection(collectionOwner) {
        isOrdered = order == ORDERED;
    }
    ~NodeCollection();

private:
    friend class NodeKeeper;

    void place(Node* node, unsigned index, Parenthood parenthood);
    void moveTo(unsigned index, Node* node);
    void eraseAt(unsigned index);
    void takeOut(Node* node);
    void growBack();
    void reserveMore(std::size_t count);
    void makeRoomInFront(unsigned count);
    void freeSlots();
    static void leave(Node* node);
    static void forget(Node* node);

    Node* owner;
    Node** items;       // slots; the one inside this object as long as that is enough
    unsigned capacity;  // slots that there are
    bool ownsSlots = false;
    bool isOrdered = true;  // all but a NodeKeeper
    unsigned first = 0;     // slots in front of it are free: a node's position counts them
    unsigned last = 0;      // first free slot behind the nodes
    Node* onlyItem[1];
};

}  // namespace qvox

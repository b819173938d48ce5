// Nodes of a chain by their numbers, for a list that is asked for them: near an end, or the node
// that was asked for last, a few steps lead there; and once so many steps have been made as there
// are nodes, an array is kept. Several threads may ask at a time.
#pragma once

#include <atomic>
#include <cstddef>
#include <mutex>
#include <vector>

#include <qvox/dom.h>

namespace qvox {

class NodeIndex {
public:
    // The node of that number, below `count`, in the chain.
    Node* at(std::size_t number, Node* first, std::size_t count);

    // What happens to the chain, before it does: a node comes in front of `ref`, or at the end for
    // null; a node leaves.
    void comes(Node* node, const Node* ref, const Node* first);
    void leaves(const Node* node, const Node* first);

private:
    Node* walk(std::size_t number, Node* first, std::size_t count);
    void fill(Node* first, std::size_t count);
    void push(Node* node);
    void forgetArray();

    std::mutex lock;
    Node* recent = nullptr;  // the node that was asked for last, or null
    std::size_t recentNumber = 0;
    std::size_t steps = 0;  // made since the array was last lost
    std::atomic<bool> hasArray{false};
    std::vector<Node*> array;
    std::size_t gone = 0;  // how many have left at the front of the array
};

}  // namespace qvox

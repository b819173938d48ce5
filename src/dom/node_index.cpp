#include "dom/node_index.h"

#include <new>

#include "dom/node_links.h"

namespace qvox {

Node* NodeIndex::at(std::size_t number, Node* first, std::size_t count) {
    if (hasArray.load(std::memory_order_acquire)) return array[gone + number];
    const std::lock_guard<std::mutex> guard(lock);
    recent = walk(number, first, count);
    recentNumber = number;
    if (steps > count && !hasArray.load(std::memory_order_relaxed)) fill(first, count);
    return recent;
}

// From the nearest of the places that are known.
Node* NodeIndex::walk(std::size_t number, Node* first, std::size_t count) {
    Node* node = first;
    std::size_t here = 0;
    if (recent != nullptr && number >= recentNumber / 2) {
        node = recent;
        here = recentNumber;
    }
    if (number > here && number - here > count - 1 - number) {
        node = NodeLinks::last(first);
        here = count - 1;
    }
    for (; here < number; ++here, ++steps) node = NodeLinks::next(node);
    for (; here > number; --here, ++steps) node = NodeLinks::previous(node);
    return node;
}

void NodeIndex::fill(Node* first, std::size_t count) {
    try {
        array.reserve(count);
    } catch (const std::bad_alloc&) {
        steps = 0;  // it goes without
        return;
    }
    for (Node* node = first; node != nullptr; node = NodeLinks::next(node)) array.push_back(node);
    hasArray.store(true, std::memory_order_release);
}

void NodeIndex::forgetArray() {
    hasArray.store(false, std::memory_order_relaxed);
    array.clear();
    gone = 0;
    steps = 0;
}

void NodeIndex::push(Node* node) {
    try {
        array.push_back(node);
    } catch (const std::bad_alloc&) {
        forgetArray();
    }
}

void NodeIndex::comes(Node* node, const Node* ref, const Node* first) {
    const bool hadArray = hasArray.load(std::memory_order_relaxed);
    if (ref == nullptr) {
        if (hadArray) push(node);
        return;
    }
    if (ref == recent || ref == first) {
        ++recentNumber;
    } else {
        recent = nullptr;
    }
    if (!hadArray) return;
    if (ref == first && gone > 0) {
        array[--gone] = node;
    } else {
        forgetArray();
    }
}

void NodeIndex::leaves(const Node* node, const Node* first) {
    const bool isLast = NodeLinks::next(node) == nullptr;
    if (node == recent) {
        recent = NodeLinks::next(node);
    } else if (node == first) {
        --recentNumber;
    } else if (!isLast) {
        recent = nullptr;
    }
    if (!hasArray.load(std::memory_order_relaxed)) return;
    if (isLast) {
        array.pop_back();
    } else if (node == first) {
        ++gone;
    } else {
        forgetArray();
    }
}

}  // namespace qvox

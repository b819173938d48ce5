#include "dom/node_keeper.h"

#include <mutex>

#include "dom/tree.h"

namespace qvox {

NodeKeeper::~NodeKeeper() {
    while (Node* const node = front()) {
        giveUp(node);
        Tree::destroy(node);
    }
}

NodeKeeper& NodeKeeper::of(const Node* node) {
    return static_cast<NodeKeeper&>(*NodeLinks::collectionOf(node));
}

void NodeKeeper::take(Node* node) {
    const std::lock_guard<Lock> guard(lock);
    link(node, nullptr);
    NodeLinks::stand(node, this, Standing::KEPT);
}

void NodeKeeper::giveUp(Node* node) {
    const std::lock_guard<Lock> guard(lock);
    unlink(node);
    NodeLinks::standNowhere(node);
}

}  // namespace qvox

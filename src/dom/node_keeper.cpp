#include "dom/node_keeper.h"

#include <mutex>

namespace qvox {

void NodeKeeper::take(Node* node) {
    const std::lock_guard<Lock> guard(lock);
    append(node, NO_PARENT);
}

void NodeKeeper::giveUp(Node* node) {
    const std::lock_guard<Lock> guard(lock);
    takeOut(node);
}

}  // namespace qvox

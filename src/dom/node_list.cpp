#include "dom/node_list.h"

namespace qvox {

NodeListImpl emptyNodeList(nullptr);

Node* ResultList::item(int index) const {
    return index < 0 || index >= getLength() ? nullptr : nodes[static_cast<std::size_t>(index)];
}

}  // namespace qvox

// Which nodes a walk shows.
#pragma once

#include <qvox/dom.h>

namespace qvox {

struct NodeTest {
    unsigned long whatToShow;
    NodeFilter* filter;  // or null; not asked about a type that isn't shown

    bool passes(Node* node) const {
        const int type = node->getNodeType();
        if (type < Node::ELEMENT_NODE || type > Node::NOTATION_NODE) return false;
        if ((whatToShow >> static_cast<unsigned>(type - 1) & 1U) == 0) return false;
        return filter == nullptr || filter->acceptNode(node) == NodeFilter::FILTER_ACCEPT;
    }
};

}  // namespace qvox

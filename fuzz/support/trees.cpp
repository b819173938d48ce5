#include "support/trees.h"

#include <vector>

#include "support/require.h"

namespace qvox_fuzz {

namespace {

using qvox::NamedNodeMap;
using qvox::Node;

void push_items(std::vector<Node*>& open, const NamedNodeMap* map) {
    for (int i = map != nullptr ? map->getLength() : 0; i-- > 0;) open.push_back(map->item(i));
}

void check_children(const Node* node) {
    const qvox::NodeList& children = *node->getChildNodes();
    const int count = children.getLength();
    require(node->hasChildNodes() == (count > 0), "hasChildNodes tells of the list");
    require(node->getFirstChild() == children.item(0), "the first child begins the list");
    require(node->getLastChild() == children.item(count - 1), "the last child ends the list");
    for (int i = 0; i < count; ++i) {
        const Node* const child = children.item(i);
        // A refused insertion of a fragment takes its first child's parent away, and nothing else.
        const bool isRefused = i == 0 && node->getNodeType() == Node::DOCUMENT_FRAGMENT_NODE;
        if (isRefused && child->getParentNode() == nullptr) continue;
        require(child->getParentNode() == node, "a child knows its parent");
        require(child->getNextSibling() == children.item(i + 1), "a child knows the next one");
        require(child->getPreviousSibling() == children.item(i - 1),
                "a child knows the one before");
    }
    require(children.item(-1) == nullptr && children.item(count) == nullptr, "the list has ends");
}

void add(std::string& out, const qvox::Xstring& text) {
    if (text.isNull()) {
        out += '-';
        return;
    }
    require(text.data()[text.length()] == 0, "a NUL stands behind a text");
    out += '\'';
    const auto* const bytes = reinterpret_cast<const char*>(text.data());
    out.append(bytes, 2 * static_cast<std::size_t>(text.length()));
    out += '\'';
}

void add_names(std::string& out, const Node* node) {
    out += static_cast<char>('a' + node->getNodeType());
    add(out, node->getNodeName());
    add(out, node->getNamespaceURI());
    add(out, node->getPrefix());
    add(out, node->getLocalName());
    add(out, node->getNodeValue());
}

}  // namespace

void for_each_node(Node* root, const std::function<void(Node*)>& visit) {
    std::vector<Node*> open(1, root);
    while (!open.empty()) {
        Node* const node = open.back();
        open.pop_back();
        visit(node);
        const qvox::NodeList& children = *node->getChildNodes();
        for (int i = children.getLength(); i-- > 0;) open.push_back(children.item(i));
        push_items(open, node->getAttributes());
        if (node->getNodeType() != Node::DOCUMENT_TYPE_NODE) continue;
        push_items(open, static_cast<qvox::DocumentType*>(node)->getEntities());
        push_items(open, static_cast<qvox::DocumentType*>(node)->getNotations());
    }
}

void check_tree(Node* root) {
    std::string names;
    for_each_node(root, [&names](Node* node) {
        check_children(node);
        names.clear();
        add_names(names, node);
        const NamedNodeMap* const attributes = node->getAttributes();
        for (int i = attributes != nullptr ? attributes->getLength() : 0; i-- > 0;) {
            const auto* const attribute = dynamic_cast<const qvox::Attr*>(attributes->item(i));
            if (attribute == nullptr) continue;
            require(attribute->getOwnerElement() == node, "an attribute knows its element");
        }
    });
}

// A sign for each node's end would cost a second visit; the number of its children does as well.
std::string shown(Node* root) {
    std::string out;
    for_each_node(root, [&out](Node* node) {
        add_names(out, node);
        out += std::to_string(node->getChildNodes()->getLength());
        const NamedNodeMap* const attributes = node->getAttributes();
        if (attributes != nullptr) out += '@' + std::to_string(attributes->getLength());
        const auto* const attribute = dynamic_cast<const qvox::Attr*>(node);
        if (attribute != nullptr) out += attribute->getSpecified() ? '+' : '*';
    });
    return out;
}

}  // namespace qvox_fuzz

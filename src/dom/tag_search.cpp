#include "dom/tag_search.h"

#include "dom/attr.h"
#include "dom/document.h"
#include "dom/element.h"
#include "dom/tree.h"
#include "dom/tree_visit.h"

namespace qvox {

namespace {

bool matches(const Xstring& pattern, const Xstring& name) {
    return pattern == "*" || pattern == name;
}

void check_root(const Node* root) {
    if (root != nullptr) return;
    throw DOMException(DOMException::NOT_SUPPORTED_ERR, "TreeWalker root is null");
}

// The element whose descendants are asked for isn't looked at itself.
template <typename Match>
NodeList* search_names(Node& context, Node* root, Match match) {
    check_root(root);
    ResultList* list = Tree::documentOf(&context)->tmpNodeList(&context);
    TreeVisit visit(root, NodeFilter::SHOW_ELEMENT);
    bool isThere = root != &context || visit.next();
    for (; isThere; isThere = visit.next()) {
        if (match(*visit.node())) list->add(visit.node());
    }
    return list;
}

bool has_id(const ElementImpl& element, const Xstring& id) {
    for (const Node* item = element.firstAttribute(); item != nullptr;
         item = NodeLinks::next(item)) {
        if (item->getNodeType() != Node::ATTRIBUTE_NODE) continue;
        const auto* attribute = static_cast<const AttrImpl*>(item);
        if (attribute->getAttributeType() == "ID" && attribute->getValue() == id) return true;
    }
    return false;
}

}  // namespace

NodeList* search_tag_name(Node& context, Node* root, const Xstring& name) {
    return search_names(context, root,
                        [&](const Node& node) { return matches(name, node.getNodeName()); });
}

NodeList* search_tag_name_ns(Node& context, Node* root, const Xstring& namespaceURI,
                             const Xstring& localName) {
    return search_names(context, root, [&](const Node& node) {
        const Xstring& uri = node.getNamespaceURI();
        return !uri.isNull() && matches(namespaceURI, uri) &&
               matches(localName, node.getLocalName());
    });
}

Element* search_id(Node* root, const Xstring& elementId) {
    check_root(root);
    TreeVisit visit(root, NodeFilter::SHOW_ELEMENT);
    do {
        auto* element = static_cast<ElementImpl*>(visit.node());
        if (has_id(*element, elementId)) return element;
    } while (visit.next());
    return nullptr;
}

}  // namespace qvox

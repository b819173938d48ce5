#include "dom/tag_search.h"

#include "dom/attr.h"
#include "dom/document.h"
#include "dom/element.h"
#include "dom/tree.h"
#include "dom/tree_visit.h"
#include "traversal/tree_walker.h"

namespace qvox {

namespace {

bool matches(const Xstring& pattern, const Xstring& name) {
    return pattern == "*" || pattern == name;
}

void add_result(TreeVisit& visit, Node* node) {
    static_cast<ResultList*>(visit.current)->add(node);
}

void match_name(TreeVisit& visit) {
    Node* node = visit.walker->getCurrentNode();
    if (matches(visit.first, node->getNodeName())) add_result(visit, node);
}

void match_name_ns(TreeVisit& visit) {
    Node* node = visit.walker->getCurrentNode();
    const Xstring& uri = node->getNamespaceURI();
    if (uri.isNull() || !matches(visit.first, uri)) return;
    if (matches(visit.second, node->getLocalName())) add_result(visit, node);
}

// Visits the elements. A step sees only those that count: the element whose descendants are asked
// for is passed over at the start.
void search(TreeVisit& visit, Node* root, bool withRoot) {
    TreeWalkerImpl walker(root, NodeFilter::SHOW_ELEMENT, nullptr, false);
    visit.walker = &walker;
    visit.deep = true;
    if (withRoot) {
        runVisit(visit);
        visit.walker = nullptr;
        return;
    }
    void* const list = visit.current;
    for (Node* child = walker.firstChild(); child != nullptr; child = walker.nextSibling()) {
        visit.current = list;
        runVisit(visit);
    }
    visit.walker = nullptr;
}

NodeList* search_names(Node& context, Node* root, TreeVisit& visit) {
    if (root == nullptr) {
        throw DOMException(DOMException::NOT_SUPPORTED_ERR, "TreeWalker root is null");
    }
    ResultList* list = Tree::documentOf(&context)->tmpNodeList(&context);
    visit.current = list;
    search(visit, root, root != &context);
    return list;
}

void match_id(TreeVisit& visit) {
    if (visit.found != nullptr) return;
    auto* element = static_cast<ElementImpl*>(visit.walker->getCurrentNode());
    const NamedNodeMapImpl& attributes = element->attributeMap();
    for (std::size_t i = 0; i < attributes.size(); ++i) {
        if (attributes.at(i)->getNodeType() != Node::ATTRIBUTE_NODE) continue;
        const auto* attribute = static_cast<const AttrImpl*>(attributes.at(i));
        if (attribute->getAttributeType() == "ID" && attribute->getValue() == visit.first) {
            visit.found = element;
            return;
        }
    }
}

}  // namespace

NodeList* search_tag_name(Node& context, Node* root, const Xstring& name) {
    TreeVisit visit;
    visit.pre = match_name;
    visit.first = name;
    return search_names(context, root, visit);
}

NodeList* search_tag_name_ns(Node& context, Node* root, const Xstring& namespaceURI,
                             const Xstring& localName) {
    TreeVisit visit;
    visit.pre = match_name_ns;
    visit.first = namespaceURI;
    visit.second = localName;
    return search_names(context, root, visit);
}

Element* search_id(Node* root, const Xstring& elementId) {
    if (root == nullptr) {
        throw DOMException(DOMException::NOT_SUPPORTED_ERR, "TreeWalker root is null");
    }
    TreeVisit visit;
    visit.pre = match_id;
    visit.first = elementId;
    search(visit, root, true);
    return static_cast<Element*>(visit.found);
}

}  // namespace qvox

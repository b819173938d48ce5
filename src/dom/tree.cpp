#include "dom/tree.h"

#include <vector>

#include "dom/document.h"
#include "dom/element.h"
#include "dom/node_memory.h"
#include "dom/owned_nodes.h"

namespace qvox {

namespace {

constexpr unsigned type_bit(int type) { return 1U << static_cast<unsigned>(type); }

constexpr unsigned NO_TYPE = 0;
constexpr unsigned EVERY_TYPE = ~0U;
constexpr unsigned CONTENT_TYPES =
    type_bit(Node::ELEMENT_NODE) | type_bit(Node::TEXT_NODE) | type_bit(Node::CDATA_SECTION_NODE) |
    type_bit(Node::ENTITY_REFERENCE_NODE) | type_bit(Node::PROCESSING_INSTRUCTION_NODE) |
    type_bit(Node::COMMENT_NODE);
constexpr unsigned ATTRIBUTE_TYPES =
    type_bit(Node::TEXT_NODE) | type_bit(Node::ENTITY_REFERENCE_NODE);
constexpr unsigned DOCUMENT_TYPES =
    type_bit(Node::ELEMENT_NODE) | type_bit(Node::PROCESSING_INSTRUCTION_NODE) |
    type_bit(Node::COMMENT_NODE) | type_bit(Node::DOCUMENT_TYPE_NODE);

// The child types that a parent type accepts, by the parent's number.
constexpr unsigned ACCEPTED_TYPES[] = {
    NO_TYPE,          // none of the standard's
    CONTENT_TYPES,    // element
    ATTRIBUTE_TYPES,  // attribute
    NO_TYPE,          // text
    NO_TYPE,          // CDATA section
    CONTENT_TYPES,    // entity reference
    CONTENT_TYPES,    // entity
    NO_TYPE,          // processing instruction
    NO_TYPE,          // comment
    DOCUMENT_TYPES,   // document
    EVERY_TYPE,       // document type
    CONTENT_TYPES,    // fragment
    NO_TYPE,          // notation
};

DocumentImpl* as_impl(const Document* document) {
    return const_cast<DocumentImpl*>(static_cast<const DocumentImpl*>(document));
}

bool is_fragment(const Node* node) { return node->getNodeType() == Node::DOCUMENT_FRAGMENT_NODE; }

}  // namespace

const Document* Tree::ownDocumentOf(const Node* node) {
    const bool isDocument = node->getNodeType() == Node::DOCUMENT_NODE;
    return isDocument ? static_cast<const Document*>(node) : node->ownerDocument;
}

DocumentImpl* Tree::documentOf(const Node* node) { return as_impl(ownDocumentOf(node)); }

// Null for a document, whatever it stands in.
const Node* Tree::ownerOf(const Node* node) {
    if (node->holder == nullptr) return nullptr;
    return node->getNodeType() == Node::DOCUMENT_NODE ? nullptr : node->holder->getOwner();
}

// A node that owns nothing, as most have when they get their place, needs no look at all ancestors.
bool Tree::owns(const Node* candidate, const Node* node) {
    if (owned_nodes_of(const_cast<Node&>(*candidate)) == nullptr) return candidate == node;
    while (node != nullptr && node != candidate) node = ownerOf(node);
    return node != nullptr;
}

bool Tree::fits(const Node* parent, const Node* child) {
    if (is_fragment(child)) return true;
    const unsigned accepted = ACCEPTED_TYPES[parent->getNodeType()];
    if ((accepted & type_bit(child->getNodeType())) == 0) return false;
    if (firstChildOf(child) == nullptr) return parent != child;
    while (parent != nullptr && parent != child) parent = parentOf(parent);
    return parent == nullptr;
}

bool Tree::accepts(const Node* parent, const Node* child) {
    return child != nullptr && fits(parent, child) && !owns(child, parent);
}

DocumentImpl* Tree::treeDocumentOf(const Node* node) {
    const Document* document = nullptr;
    for (; node != nullptr; node = ownerOf(node)) {
        if (const Document* nodesDocument = ownDocumentOf(node)) document = nodesDocument;
    }
    return as_impl(document);
}

DocumentImpl* Tree::treeDocumentOfLiving(const Node* node) {
    DocumentImpl* document = documentOf(node);
    return document != nullptr && !document->hasTravellers() ? document : treeDocumentOf(node);
}

void Tree::noteTravel(const Node* parent, const Node* node) {
    const Document* document = node->ownerDocument;
    if (document == ownDocumentOf(parent)) return;
    if (DocumentImpl* living = DocumentImpl::livingOne(document)) living->setHasTravellers();
}

Node* Tree::appendChildNoCheck(Node* parent, Node* child) {
    makeChildList(parent);
    if (Node* oldParent = parentOf(child)) removeChildNoCheck(oldParent, child);
    if (is_fragment(child)) {
        takeFragment(parent, child);
    } else {
        appendAsIs(parent, child);
    }
    return child;
}

void Tree::appendAsIs(Node* parent, Node* child) {
    makeChildList(parent);
    noteTravel(parent, child);
    parent->children->append(child, NodeCollection::OWNER_IS_PARENT);
}

void Tree::appendAll(Node* parent, Node* const* nodes, std::size_t count) {
    if (count == 0) return;
    makeChildList(parent);
    parent->children->appendAll(nodes, count, NodeCollection::OWNER_IS_PARENT);
}

void Tree::destroy(Node* node) {
    if (node == nullptr) return;
    if (!node->isInChunk) {
        delete node;
        return;
    }
    node->~Node();
    NodeMemory::release(node);
}

void Tree::makeChildList(Node* parent) {
    if (parent->children != nullptr) return;
    const bool isElement = parent->getNodeType() == Node::ELEMENT_NODE;
    parent->children =
        isElement ? &static_cast<ElementImpl*>(parent)->childStorage() : new NodeListImpl(parent);
}

// What a fragment gives up. Fragments can stand in it by a replacement.
struct Tree::FragmentContent {
    std::vector<Node*> nodes;  // all, in document order
    std::vector<Node*> items;
    std::vector<Node*> innerFragments;  // each behind the one that it is in
    std::size_t leadingFragments = 0;   // those that come before the first item
    bool endsWithItem = false;          // and not with an empty fragment
};

Tree::FragmentContent Tree::contentOf(Node* fragment) {
    FragmentContent content;
    Node* node = firstChildOf(fragment);
    while (node != nullptr) {
        content.endsWithItem = !is_fragment(node);
        content.nodes.push_back(node);
        (content.endsWithItem ? content.items : content.innerFragments).push_back(node);
        if (content.items.empty()) ++content.leadingFragments;
        Node* next = content.endsWithItem ? nullptr : firstChildOf(node);
        while (next == nullptr && node != fragment) {
            next = nextInList(node);
            node = listOwnerOf(node);
        }
        node = next;
    }
    return content;
}

// Takes everything out of the fragment, each node from the front of its list, and leaves the inner
// fragments to its document.
void Tree::emptyFragment(const FragmentContent& content, Node* fragment) {
    for (Node* node : content.nodes) NodeCollection::release(node);
    if (content.innerFragments.empty()) return;
    DocumentImpl* document = treeDocumentOf(fragment);
    for (Node* inner : content.innerFragments) abandon(inner, document);
}

void Tree::takeFragment(Node* parent, Node* fragment) {
    const FragmentContent content = contentOf(fragment);
    emptyFragment(content, fragment);
    for (Node* item : content.items) appendAsIs(parent, item);
}

// What was inserted last; `ref` for a fragment that is empty or ends with an empty one. Where `ref`
// is no child, the first item has lost its parent and still stands in the fragment's list, and so
// do the fragments in front of it.
Node* Tree::insertFragment(Node* parent, Node* fragment, Node* ref) {
    const FragmentContent content = contentOf(fragment);
    const std::vector<Node*>& items = content.items;
    if (!items.empty()) {
        if (!parent->children->holds(ref)) {
            for (std::size_t i = 0; i < content.leadingFragments; ++i) {
                clearParent(content.innerFragments[i]);
            }
            clearParent(items.front());
            return nullptr;
        }
    }
    emptyFragment(content, fragment);
    if (!items.empty()) {
        for (Node* item : items) noteTravel(parent, item);
        parent->children->insertAllBefore(items.data(), items.size(), ref,
                                          NodeCollection::OWNER_IS_PARENT);
    }
    return content.endsWithItem ? items.back() : ref;
}

Node* Tree::insertBeforeNoCheck(Node* parent, Node* child, Node* ref) {
    if (parent->children == nullptr || ref == nullptr) return appendChildNoCheck(parent, child);
    if (Node* oldParent = parentOf(child)) removeChildNoCheck(oldParent, child);
    if (!is_fragment(child)) {
        if (!parent->children->holds(ref)) return nullptr;
        noteTravel(parent, child);
        parent->children->insertBefore(child, ref, NodeCollection::OWNER_IS_PARENT);
        return child;
    }
    return insertFragment(parent, child, ref);
}

Node* Tree::removeChildNoCheck(Node* parent, Node* child) {
    if (parent->children == nullptr || !parent->children->holds(child)) return nullptr;
    parent->children->remove(child);
    return child;
}

Node* Tree::replaceChildNoCheck(Node* parent, Node* newChild, Node* oldChild) {
    if (parent->children == nullptr) return nullptr;
    if (Node* oldParent = parentOf(newChild)) removeChildNoCheck(oldParent, newChild);
    if (!parent->children->holds(oldChild)) return nullptr;
    const bool isChild = parentOf(oldChild) != nullptr;
    noteTravel(parent, newChild);
    parent->children->replace(
        newChild, oldChild, isChild ? NodeCollection::OWNER_IS_PARENT : NodeCollection::NO_PARENT);
    return oldChild;
}

void Tree::abandon(Node* node, DocumentImpl* document) {
    if (node->getNodeType() == Node::DOCUMENT_NODE) return;
    if (document == nullptr) document = DocumentImpl::livingOne(node->ownerDocument);
    if (document != nullptr) document->adopt(node);
}

DocumentGuard::DocumentGuard(const Node* node) : lock(nullptr) {
    DocumentImpl* document = node != nullptr ? Tree::documentOf(node) : nullptr;
    if (document != nullptr) {
        lock = &document->getLock();
        lock->lock();
    }
}

DocumentGuard::~DocumentGuard() {
    if (lock != nullptr) lock->unlock();
}

}  // namespace qvox

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

bool is_fragment(const Node* node) { return node->getNodeType() == Node::DOCUMENT_FRAGMENT_NODE; }

}  // namespace

DocumentImpl* Tree::documentOf(const Node* node) {
    const bool isDocument = node->getNodeType() == Node::DOCUMENT_NODE;
    const Document* document =
        isDocument ? static_cast<const Document*>(node) : node->ownerDocument;
    return const_cast<DocumentImpl*>(static_cast<const DocumentImpl*>(document));
}

// A node that owns nothing, as most have when they get their place, needs no look at all ancestors.
bool Tree::owns(const Node* candidate, const Node* node) {
    if (owned_nodes_of(const_cast<Node&>(*candidate)) == nullptr) return candidate == node;
    while (node != nullptr && node != candidate) {
        node = node->holder != nullptr ? node->holder->getOwner() : nullptr;
    }
    return node != nullptr;
}

bool Tree::accepts(const Node* parent, const Node* child) {
    if (child == nullptr) return false;
    if (!is_fragment(child)) {
        const unsigned accepted = ACCEPTED_TYPES[parent->getNodeType()];
        if ((accepted & type_bit(child->getNodeType())) == 0) return false;
    }
    return !owns(child, parent);
}

Node* Tree::appendChildNoCheck(Node* parent, Node* child) {
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

// Empties a fragment. Fragments inside it, which can stand there by a replacement, are emptied in
// their place and left to the document. `place` gets each other node, and null where a fragment
// begins.
template <typename Place>
void Tree::emptyFragment(Node* fragment, Place place) {
    Node* from = fragment;
    for (;;) {
        Node* item = firstChildOf(from);
        if (item == nullptr) {
            if (from == fragment) return;
            Node* outer = from->holder->getOwner();
            NodeCollection::release(from);
            abandon(from);
            from = outer;
        } else if (is_fragment(item)) {
            place(nullptr);
            from = item;
        } else {
            place(item);
        }
    }
}

void Tree::takeFragment(Node* parent, Node* fragment) {
    makeChildList(parent);
    emptyFragment(fragment, [parent](Node* item) {
        if (item != nullptr) parent->children->append(item, NodeCollection::OWNER_IS_PARENT);
    });
}

// What was inserted last; `ref` for an empty fragment. Where `ref` is no child, the first item has
// lost its parent and still stands in the fragment's list.
Node* Tree::insertFragment(Node* parent, Node* fragment, Node* ref) {
    Node* first = firstChildOf(fragment);
    if (first != nullptr && !parent->children->holds(ref)) {
        clearParent(first);
        return nullptr;
    }
    Node* last = ref;
    std::vector<Node*> items;
    emptyFragment(fragment, [&](Node* item) {
        last = item != nullptr ? item : ref;
        if (item == nullptr) return;
        NodeCollection::release(item);
        items.push_back(item);
    });
    if (items.empty()) return last;  // then ref need not be a child
    parent->children->insertAllBefore(items.data(), items.size(), ref,
                                      NodeCollection::OWNER_IS_PARENT);
    return last;
}

Node* Tree::insertBeforeNoCheck(Node* parent, Node* child, Node* ref) {
    if (parent->children == nullptr || ref == nullptr) return appendChildNoCheck(parent, child);
    if (Node* oldParent = parentOf(child)) removeChildNoCheck(oldParent, child);
    if (!is_fragment(child)) {
        if (!parent->children->holds(ref)) return nullptr;
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
    parent->children->replace(
        newChild, oldChild, isChild ? NodeCollection::OWNER_IS_PARENT : NodeCollection::NO_PARENT);
    return oldChild;
}

void Tree::abandon(Node* node) {
    if (DocumentImpl* document = documentOf(node)) document->adopt(node);
}

DocumentGuard::DocumentGuard(const Node* node) : lock(nullptr) {
    if (DocumentImpl* document = Tree::documentOf(node)) {
        lock = &document->getLock();
        lock->lock();
    }
}

DocumentGuard::~DocumentGuard() {
    if (lock != nullptr) lock->unlock();
}

}  // namespace qvox

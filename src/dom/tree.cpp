#include "dom/tree.h"

#include <utility>
#include <vector>

#include "dom/document.h"
#include "dom/element.h"
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

DocumentImpl* Tree::documentOf(const Node* node) { return as_impl(ownDocumentOf(node)); }

// Null for a document, whatever it stands in.
const Node* Tree::ownerOf(const Node* node) {
    if (node->getNodeType() == Node::DOCUMENT_NODE) return nullptr;
    return standsWith(node);
}

Node* Tree::standsWith(const Node* node) {
    switch (NodeLinks::standingOf(node)) {
        case Standing::NOWHERE: return nullptr;
        case Standing::CHILD:
        case Standing::LISTED:
        case Standing::ATTRIBUTE: return holderOf(node);
        case Standing::COLLECTED: return NodeLinks::collectionOf(node)->getOwner();
        case Standing::KEPT: return NodeKeeper::of(node).getOwner();
    }
    return nullptr;
}

// A node that owns nothing, as most have when they get their place, needs no look at all ancestors.
bool Tree::owns(const Node* candidate, const Node* node) {
    if (first_owned_of(*candidate) == nullptr) return candidate == node;
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
    const Document* document = ownDocumentOf(node);
    const bool isFromHere = document == ownDocumentOf(parent);
    if (isFromHere || node->getNodeType() == Node::DOCUMENT_NODE) return;
    if (DocumentImpl* living = DocumentImpl::livingOne(document)) living->setHasTravellers();
}

// A document type, which has no document, takes nodes of the one that it stood under along.
void Tree::release(Node* node) {
    const Node* const holder = standsWith(node);
    if (holder == nullptr) return;
    touch(holder);
    touch(node);
    const bool isKept = NodeLinks::standingOf(node) == Standing::KEPT;
    if (!isKept && node->getNodeType() == Node::DOCUMENT_TYPE_NODE) {
        DocumentImpl* const document = DocumentImpl::livingOne(ownDocumentOf(holder));
        if (document != nullptr) document->setHasTravellers();
    }
    takeOut(node);
}

// What it leaves may have outlived its document.
void Tree::releaseDying(Node* node) {
    const Node* const holder = standsWith(node);
    if (holder == nullptr) return;
    touch(holder);
    if (NodeLinks::standingOf(node) == Standing::KEPT) return takeOut(node);
    const DocumentGuard guard(DocumentImpl::livingOne(ownDocumentOf(holder)));
    takeOut(node);
}

void Tree::takeOut(Node* node) {
    switch (NodeLinks::standingOf(node)) {
        case Standing::NOWHERE: return;
        case Standing::CHILD:
        case Standing::LISTED: {
            NodeSlot children = NodeSlot::childrenOf(holderOf(node));
            const bool isAtEnd = node == children.front() || node == children.back();
            if (!isAtEnd) NodeLinks::setCounted(holderOf(node), false);
            children.unlink(node);
            break;
        }
        case Standing::ATTRIBUTE:
            static_cast<ElementImpl*>(holderOf(node))->attributeSlot().unlink(node);
            break;
        case Standing::COLLECTED: NodeLinks::collectionOf(node)->unlink(node); break;
        case Standing::KEPT: NodeKeeper::of(node).giveUp(node); return;
    }
    NodeLinks::standNowhere(node);
}

// Takes a node without a place.
void Tree::put(Node* parent, Node* node, Node* ref, Standing standing) {
    touch(parent);
    touch(node);
    noteTravel(parent, node);
    NodeSlot children = NodeSlot::childrenOf(parent);
    if (NodeLinks::areCounted(parent)) {
        Node* const neighbour = ref != nullptr ? ref : children.back();
        const bool isAtEnd = ref == nullptr || ref == children.front();
        const bool staysCounted = isAtEnd && neighbour != nullptr;
        if (staysCounted) {
            const unsigned beside = NodeLinks::indexOf(neighbour);
            NodeLinks::setIndex(node, ref == nullptr ? beside + 1 : beside - 1);
        }
        NodeLinks::setCounted(parent, staysCounted);
    }
    NodeLinks::stand(node, parent, standing);  // before a step from a sibling leads there
    children.link(node, ref);
}

NodeListImpl& Tree::childListOf(const Node* node) {
    const NodeSlot children = NodeSlot::childrenOf(node);
    if (!children.wasUsed()) return emptyNodeList;
    return children.collectionOf<NodeListImpl>(const_cast<Node*>(node));
}

// Counted once, children stay so as long as they come and go at the ends.
std::size_t Tree::childIndexOf(const Node* parent, const Node* child) {
    const DocumentGuard guard(parent);
    const Node* const first = firstChildOf(parent);
    if (!NodeLinks::areCounted(parent)) {
        unsigned index = 0;
        for (Node* node = firstChildOf(parent); node != nullptr; node = NodeLinks::next(node)) {
            NodeLinks::setIndex(node, index++);
        }
        NodeLinks::setCounted(const_cast<Node*>(parent), true);
    }
    return (NodeLinks::indexOf(child) - NodeLinks::indexOf(first)) & NodeLinks::LARGEST_INDEX;
}

Node* Tree::appendChildNoCheck(Node* parent, Node* child) {
    NodeSlot::childrenOf(parent).setUsed();
    if (Node* oldParent = parentOf(child)) removeChildNoCheck(oldParent, child);
    if (is_fragment(child)) {
        takeFragment(parent, child);
    } else {
        appendAsIs(parent, child);
    }
    return child;
}

void Tree::appendAsIs(Node* parent, Node* child) {
    release(child);
    put(parent, child, nullptr, Standing::CHILD);
}

namespace {

// Gives back the memory of nodes, those that lie together at once.
class Releases {
public:
    Releases() = default;
    Releases(const Releases&) = delete;
    Releases& operator=(const Releases&) = delete;
    ~Releases() { flush(); }

    void add(NodeBlock& nodesBlock) {
        if (block != &nodesBlock) flush();
        block = &nodesBlock;
        ++count;
    }

private:
    void flush() {
        if (count != 0) block->release(std::exchange(count, 0U));
    }

    NodeBlock* block = nullptr;
    unsigned count = 0;
};

}  // namespace

void Tree::destroy(Node* node) {
    if (node == nullptr) return;
    NodeBlock& block = NodeLinks::blockOf(node);
    if (node->getNodeType() != Node::DOCUMENT_NODE) destroyContent(node);
    NodeLinks::destruct(node);
    block.release(1);
}

// Always destroys a node that owns nothing any more, so that no destructor goes deep.
void Tree::destroyContent(Node* root) {
    Releases releases;
    Node* node = root;
    for (;;) {
        if (Node* const owned = first_owned_of(*node)) {
            if (owned->getNodeType() == Node::DOCUMENT_NODE) {
                takeOut(owned);
            } else {
                node = owned;
            }
            continue;
        }
        if (node == root) return;
        Node* const owner = standsWith(node);
        takeOut(node);
        NodeBlock& block = NodeLinks::blockOf(node);
        NodeLinks::destruct(node);
        releases.add(block);
        node = owner;
    }
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
    for (Node* node : content.nodes) release(node);
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
    if (!items.empty() && !isListedIn(parent, ref)) {
        for (std::size_t i = 0; i < content.leadingFragments; ++i) {
            loseParent(content.innerFragments[i]);
        }
        loseParent(items.front());
        return nullptr;
    }
    emptyFragment(content, fragment);
    for (Node* item : items) put(parent, item, ref, Standing::CHILD);
    return content.endsWithItem ? items.back() : ref;
}

void Tree::loseParent(Node* node) { NodeLinks::stand(node, holderOf(node), Standing::LISTED); }

Node* Tree::insertBeforeNoCheck(Node* parent, Node* child, Node* ref) {
    if (!NodeSlot::childrenOf(parent).wasUsed() || ref == nullptr) {
        return appendChildNoCheck(parent, child);
    }
    if (Node* oldParent = parentOf(child)) removeChildNoCheck(oldParent, child);
    if (is_fragment(child)) return insertFragment(parent, child, ref);
    if (!isListedIn(parent, ref)) return nullptr;
    if (child == ref) {
        NodeLinks::stand(child, parent, Standing::CHILD);
    } else {
        release(child);
        put(parent, child, ref, Standing::CHILD);
    }
    return child;
}

Node* Tree::removeChildNoCheck(Node* parent, Node* child) {
    if (!isListedIn(parent, child)) return nullptr;
    release(child);
    return child;
}

Node* Tree::replaceChildNoCheck(Node* parent, Node* newChild, Node* oldChild) {
    if (!NodeSlot::childrenOf(parent).wasUsed()) return nullptr;
    if (Node* oldParent = parentOf(newChild)) removeChildNoCheck(oldParent, newChild);
    if (!isListedIn(parent, oldChild)) return nullptr;
    if (newChild == oldChild) return oldChild;
    release(newChild);
    put(parent, newChild, oldChild, NodeLinks::standingOf(oldChild));
    release(oldChild);
    return oldChild;
}

void Tree::abandon(Node* node, DocumentImpl* document) {
    if (node->getNodeType() == Node::DOCUMENT_NODE) return;
    if (document == nullptr) document = DocumentImpl::livingOne(ownDocumentOf(node));
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

#include "traversal/range.h"

#include <memory>

#include "dom/document.h"
#include "dom/tree.h"

namespace qvox {

namespace {

using NodeTypes = unsigned;  // bit t stands for the node type t

constexpr NodeTypes type_bit(int type) { return 1U << static_cast<unsigned>(type); }

// What no point may stand below, and setEnd not even in.
constexpr NodeTypes CLOSED_TYPES = type_bit(Node::ENTITY_NODE) |
                                   type_bit(Node::DOCUMENT_TYPE_NODE) |
                                   type_bit(Node::NOTATION_NODE);
// What is no child of anything that a range can be in.
constexpr NodeTypes PARENTLESS_TYPES =
    type_bit(Node::ATTRIBUTE_NODE) | type_bit(Node::ENTITY_NODE) | type_bit(Node::DOCUMENT_NODE) |
    type_bit(Node::DOCUMENT_FRAGMENT_NODE) | type_bit(Node::NOTATION_NODE);
// The roots of trees in which a point may be set beside a node.
constexpr NodeTypes ROOT_TYPES = type_bit(Node::ATTRIBUTE_NODE) | type_bit(Node::DOCUMENT_NODE) |
                                 type_bit(Node::DOCUMENT_FRAGMENT_NODE);
constexpr NodeTypes NEVER_INSERTED_TYPES =
    type_bit(Node::ATTRIBUTE_NODE) | type_bit(Node::ENTITY_NODE) | type_bit(Node::DOCUMENT_NODE) |
    type_bit(Node::NOTATION_NODE);
constexpr NodeTypes NEVER_SURROUNDING_TYPES = NEVER_INSERTED_TYPES |
                                              type_bit(Node::DOCUMENT_TYPE_NODE) |
                                              type_bit(Node::DOCUMENT_FRAGMENT_NODE);

bool is_one_of(const Node* node, NodeTypes types) {
    return (type_bit(node->getNodeType()) & types) != 0;
}

[[noreturn]] void refuse_type(const char* message) {
    throw RangeException(RangeException::INVALID_NODE_TYPE_ERR, message);
}

[[noreturn]] void refuse_hierarchy(const char* message) {
    throw DOMException(DOMException::HIERARCHY_REQUEST_ERR, message);
}

// Raises for null and for the given types.
void check_type(const Node* node, NodeTypes refused, const char* message) {
    if (node == nullptr || is_one_of(node, refused)) refuse_type(message);
}

void check_ancestors(const Node* node) {
    while ((node = Tree::parentOf(node)) != nullptr) {
        if (is_one_of(node, CLOSED_TYPES)) refuse_type("invalid ancestor type");
    }
}

BoundaryPoint checked_point(Node* node, int offset) {
    check_ancestors(node);
    if (offset < 0 || offset > max_offset(node)) {
        throw DOMException(DOMException::INDEX_SIZE_ERR, "invalid offset");
    }
    return {node, offset};
}

// The point in front of a node.
BoundaryPoint point_before(Node* node) {
    check_type(root_of(node), ~ROOT_TYPES, "invalid node type");
    check_type(node, PARENTLESS_TYPES, "invalid node type");
    Node* parent = Tree::parentOf(node);
    return {parent, child_index(parent, node)};
}

BoundaryPoint one_further(const BoundaryPoint& point) {
    return {point.container, point.offset + 1};
}

// As seen from `root`: all that isn't below it counts as its end.
TagPlace place_under(Node* root, const BoundaryPoint& point) {
    return root_of(point.container) == root ? place_of(point) : TagPlace{root, TagPlace::CLOSING};
}

int sign_of(int number) { return (number > 0 ? 1 : 0) - (number < 0 ? 1 : 0); }

}  // namespace

Range* DocumentImpl::createRange() { return new RangeImpl(this); }

void DocumentImpl::freeRange(Range* range) { delete static_cast<RangeImpl*>(range); }

void RangeImpl::checkAttached() const {
    if (document == nullptr) {
        throw DOMException(DOMException::INVALID_STATE_ERR, "range already detached");
    }
}

Node* RangeImpl::getStartContainer() const {
    checkAttached();
    return start.container;
}

int RangeImpl::getStartOffset() const {
    checkAttached();
    return start.offset;
}

Node* RangeImpl::getEndContainer() const {
    checkAttached();
    return end.container;
}

int RangeImpl::getEndOffset() const {
    checkAttached();
    return end.offset;
}

bool RangeImpl::getCollapsed() const {
    checkAttached();
    return collapsed;
}

Node* RangeImpl::getCommonAncestorContainer() const {
    return common_ancestor(start.container, end.container);
}

bool RangeImpl::isInOrder() const {
    if (start.container == end.container) return start.offset <= end.offset;
    if (common_ancestor(start.container, end.container) == nullptr) return false;
    const int order = compare_places(place_of(start), place_of(end));
    if (order != 0) return order < 0;
    return !counts_units(start.container) || start.offset <= end.offset;
}

bool RangeImpl::isCollapsed() const {
    return start.container == end.container && start.offset == end.offset;
}

void RangeImpl::moveStart(const BoundaryPoint& point) {
    start = point;
    if (!isInOrder()) end = start;
    collapsed = isCollapsed();
}

void RangeImpl::moveEnd(const BoundaryPoint& point) {
    end = point;
    if (!isInOrder()) start = end;
    collapsed = isCollapsed();
}

void RangeImpl::setStart(Node* node, int offset) {
    checkAttached();
    check_type(node, 0, "invalid node type");
    moveStart(checked_point(node, offset));
}

void RangeImpl::setEnd(Node* node, int offset) {
    checkAttached();
    check_type(node, CLOSED_TYPES, "invalid node type");
    moveEnd(checked_point(node, offset));
}

void RangeImpl::setStartBefore(Node* node) {
    checkAttached();
    moveStart(point_before(node));
}

void RangeImpl::setStartAfter(Node* node) {
    checkAttached();
    moveStart(one_further(point_before(node)));
}

void RangeImpl::setEndBefore(Node* node) {
    checkAttached();
    moveEnd(point_before(node));
}

void RangeImpl::setEndAfter(Node* node) {
    checkAttached();
    moveEnd(one_further(point_before(node)));
}

void RangeImpl::collapse(bool toStart) {
    checkAttached();
    (toStart ? end : start) = toStart ? start : end;
    collapsed = true;
}

void RangeImpl::selectNode(Node* node) {
    constexpr const char* REFUSAL = "invalid select node type";
    checkAttached();
    check_type(node, 0, REFUSAL);
    check_ancestors(node);
    check_type(node, PARENTLESS_TYPES, REFUSAL);
    Node* parent = Tree::parentOf(node);
    if (parent == nullptr) refuse_type(REFUSAL);
    start = {parent, child_index(parent, node)};
    end = one_further(start);
    collapsed = false;
}

void RangeImpl::selectNodeContents(Node* node) {
    checkAttached();
    check_type(node, 0, "invalid node type");
    check_ancestors(node);
    start = {node, 0};
    end = {node, max_offset(node)};
    collapsed = isCollapsed();
}

int RangeImpl::compareBoundaryPoints(int how, Range* sourceRange) {
    checkAttached();
    const auto* source = static_cast<const RangeImpl*>(sourceRange);
    Node* root = root_of(start.container);
    if (source == nullptr || root_of(source->start.container) != root) {
        throw DOMException(DOMException::WRONG_DOCUMENT_ERR, "different root container");
    }
    const struct {
        const BoundaryPoint& theirs;
        const BoundaryPoint& ours;
    } pairs[] = {
        {source->start, start}, {source->start, end}, {source->end, end}, {source->end, start}};
    if (how < START_TO_START || how > END_TO_START) return 0;
    const auto& [theirs, ours] = pairs[how];
    const int order = compare_places(place_under(root, ours), place_under(root, theirs));
    if (order != 0 || !counts_units(start.container)) return sign_of(order);
    return sign_of(ours.offset - theirs.offset);
}

Range* RangeImpl::cloneRange() {
    checkAttached();
    auto clone = std::make_unique<RangeImpl>(document);
    clone->setStart(start.container, start.offset);
    clone->setEnd(end.container, end.offset);
    return clone.release();
}

void RangeImpl::detach() {
    checkAttached();
    document = nullptr;
    start = {};
    end = {};
}

DocumentFragment* RangeImpl::cloneContents() {
    checkAttached();
    const RangeContents contents(start, end);
    OwnedNode<DocumentFragment> fragment(document->createDocumentFragment());
    contents.copyTo(fragment.get());
    return fragment.release();
}

void RangeImpl::deleteContents() {
    checkAttached();
    RangeContents(start, end).remove();
    collapse(true);
}

DocumentFragment* RangeImpl::extractContents() {
    OwnedNode<DocumentFragment> fragment(cloneContents());
    deleteContents();
    return fragment.release();
}

const Xstring& RangeImpl::toString() {
    checkAttached();
    const RangeContents contents(start, end);
    text = "";
    contents.appendTextTo(text);
    return text;
}

void RangeImpl::checkSameDocument(const Node* newNode) const {
    if (Tree::documentOf(newNode) != Tree::documentOf(start.container)) {
        throw DOMException(DOMException::WRONG_DOCUMENT_ERR, "different owner document");
    }
}

// The other way round than one would ask.
void RangeImpl::checkStartFitsUnder(const Node* newNode) const {
    if (!Tree::fits(newNode, start.container)) {
        refuse_hierarchy("start container is not acceptable as child node");
    }
}

Node* RangeImpl::insertionParent() const {
    return counts_units(start.container) ? Tree::parentOf(start.container) : start.container;
}

// What the insertion itself would find out too late, when texts are split and contents moved.
void RangeImpl::checkStartTakes(const Node* newNode, const Node* ref) const {
    switch (start.container->getNodeType()) {
        case Node::COMMENT_NODE:
        case Node::PROCESSING_INSTRUCTION_NODE: refuse_hierarchy("start container can't be split");
        default: break;
    }
    if (counts_units(start.container) && start.offset > max_offset(start.container)) {
        throw DOMException(DOMException::INDEX_SIZE_ERR, "invalid index");
    }
    const Node* parent = insertionParent();
    if (parent == nullptr) refuse_hierarchy("start container has no parent");
    if (!Tree::accepts(parent, newNode)) refuse_hierarchy("child node is not acceptable");
    if (ref == newNode) throw DOMException(DOMException::NOT_FOUND_ERR, "ref child node not found");
}

// Where the content that goes has the start container in it, nothing stays above that.
void RangeImpl::checkSurroundedSelectable() const {
    const Node* parent = insertionParent();
    if (is_one_of(parent, CLOSED_TYPES)) refuse_type("invalid ancestor type");
    const bool startGoes = start.container != end.container && !counts_units(start.container) &&
                           compare_places(place_of(start), place_of(end)) < 0;
    if (!startGoes) check_ancestors(parent);
}

void RangeImpl::insertAtStart(Node* newNode) {
    Node* ref = counts_units(start.container)
                    ? static_cast<Text*>(start.container)->splitText(start.offset)
                    : child_behind(start);
    insertionParent()->insertBefore(newNode, ref);
}

void RangeImpl::insertNode(Node* newNode) {
    checkAttached();
    check_type(newNode, 0, "invalid insert node type");
    checkSameDocument(newNode);
    check_type(newNode, NEVER_INSERTED_TYPES, "invalid insert node type");
    checkStartFitsUnder(newNode);
    checkStartTakes(newNode, counts_units(start.container) ? nullptr : child_behind(start));
    insertAtStart(newNode);
}

void RangeImpl::surroundContents(Node* newParent) {
    checkAttached();
    check_type(newParent, 0, "invalid node type");
    checkSameDocument(newParent);
    check_type(newParent, NEVER_SURROUNDING_TYPES, "invalid node type");
    checkStartFitsUnder(newParent);
    if (Tree::parentOf(start.container) != Tree::parentOf(end.container)) {
        throw RangeException(RangeException::BAD_BOUNDARYPOINTS_ERR,
                             "surround range is partially selected");
    }
    const OwnedNode<DocumentFragment> fragment(cloneContents());
    const BoundaryPoint& kept = start.container == end.container ? end : start;
    checkStartTakes(newParent, counts_units(start.container) ? nullptr : child_behind(kept));
    checkSurroundedSelectable();
    deleteContents();
    insertAtStart(newParent);
    Tree::appendChildNoCheck(newParent, fragment.get());
    selectNode(newParent);
}

}  // namespace qvox

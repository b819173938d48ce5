#include "traversal/range_contents.h"

#include <algorithm>
#include <vector>

#include "dom/copy.h"
#include "dom/document.h"
#include "dom/tree.h"
#include "text/wide.h"

namespace qvox {

namespace {

// The node is null behind the closing tag of a root.
TagPlace tag_behind(const TagPlace& tag) {
    if (tag.side != TagPlace::CLOSING) {
        if (Node* child = Tree::firstChildOf(tag.node)) return {child, TagPlace::OPENING};
        return {tag.node, TagPlace::CLOSING};
    }
    if (Node* sibling = Tree::nextInList(tag.node)) return {sibling, TagPlace::OPENING};
    return {Tree::listOwnerOf(tag.node), TagPlace::CLOSING};
}

// Whether a walk hasn't come to its stop. It does so before the tags of the tree are at an end.
bool goes_on(const TagPlace& tag, const TagPlace& stop) {
    return tag.node != nullptr && tag != stop;
}

// A document type is nowhere but under a document or a document type, and a document under nothing
// but a document type: none is deeper than this.
void refuse_document_type(Node* ancestor) {
    const int type = ancestor->getNodeType();
    const bool hasOne =
        type == Node::DOCUMENT_TYPE_NODE ||
        (type == Node::DOCUMENT_NODE && static_cast<Document*>(ancestor)->getDoctype() != nullptr);
    if (hasOne) {
        throw DOMException(DOMException::HIERARCHY_REQUEST_ERR, "document type can't clone");
    }
}

// The nodes whose last tag in front of their closing one is selected. They are the topmost ones:
// when a node comes, all that was there of its subtree are its children, and it replaces them.
std::vector<Node*> nodes_ending_between(TagPlace tag, const TagPlace& stop) {
    std::vector<Node*> nodes;
    while (goes_on(tag, stop)) {
        tag = tag_behind(tag);
        if (tag.side != TagPlace::CLOSING) continue;
        while (!nodes.empty() && Tree::listOwnerOf(nodes.back()) == tag.node) nodes.pop_back();
        nodes.push_back(tag.node);
    }
    return nodes;
}

// Removes nodes, which are for the document to free then.
void remove_nodes(const std::vector<Node*>& nodes, DocumentImpl* document) {
    for (Node* node : nodes) {
        Tree::release(node);
        Tree::abandon(node, document);
    }
}

}  // namespace

// The end is exclusive, but for a node to be cut, whose own opening tag it is.
RangeContents::RangeContents(const BoundaryPoint& rangeStart, const BoundaryPoint& rangeEnd)
    : start(rangeStart),
      end(rangeEnd),
      ancestor(common_ancestor(start.container, end.container)),
      first{ancestor, TagPlace::OPENING},
      stop(first) {
    if (ancestor == nullptr) {
        throw DOMException(DOMException::NOT_SUPPORTED_ERR, "TreeWalker root is null");
    }
    const TagPlace from = place_of(start);
    const TagPlace to = place_of(end);
    const int order = compare_places(from, to);
    const bool isInclusive = counts_units(end.container);
    if (order > 0 || (order == 0 && !isInclusive)) return;
    first = from.side == TagPlace::BETWEEN ? tag_behind(from) : from;
    stop = isInclusive ? tag_behind(to) : to;
    // An end between the two tags of a node leaves the one in front of it out, too.
    if (to.side == TagPlace::BETWEEN) stop.side = TagPlace::OPENING;
}

RangeContents::Part RangeContents::partOf(const Node* node, const Xstring& data) const {
    const int length = data.length();
    const int from = node == start.container ? start.offset : 0;
    const int to = node == end.container ? std::min(end.offset, length) : length;
    if (from > length) throw DOMException(DOMException::INDEX_SIZE_ERR, "invalid index");
    return {from, to};
}

OwnedNode<Node> RangeContents::copyOf(Node* node) const {
    OwnedNode<Node> copy;
    if (!counts_units(node)) {
        copy.reset(cloneShallow(node, node->getOwnerDocument()));
        return copy;
    }
    const Xstring& data = node->getNodeValue();
    const Part part = partOf(node, data);
    copy.reset(cloneShallow(node, node->getOwnerDocument()));
    const bool isWhole = part.from == 0 && part.to == data.length();
    if (!isWhole) copy->setNodeValue(data.substr(part.from, part.to - part.from));
    return copy;
}

// A node that opens in the range gets a copy around the copies of its content. One that opened in
// front of it gets an empty copy where it closes: its content has gone to the fragment by then.
void RangeContents::copyTo(Node* fragment) const {
    refuse_document_type(ancestor);
    Node* parent = fragment;
    for (TagPlace tag = first; goes_on(tag, stop); tag = tag_behind(tag)) {
        if (tag.side == TagPlace::OPENING) {
            parent = append_owned(parent, copyOf(tag.node));
        } else if (parent != fragment) {
            parent = Tree::parentOf(parent);
        } else {
            append_owned(fragment, copyOf(tag.node));
        }
    }
}

bool RangeContents::isCut(const Node* node) const {
    return counts_units(node) && (node == start.container || node == end.container);
}

void RangeContents::cut(Node* node) const {
    const Xstring data = node->getNodeValue();
    const Part part = partOf(node, data);
    if (part.from == part.to) return;
    node->setNodeValue(data.substr(0, part.from) + data.substr(part.to, data.length() - part.to));
}

void RangeContents::remove() const {
    DocumentImpl* document = Tree::treeDocumentOf(ancestor);
    const DocumentGuard guard(document);
    std::vector<Node*> nodes = nodes_ending_between(first, stop);
    const auto cutNodes = std::stable_partition(nodes.begin(), nodes.end(),
                                                [this](Node* node) { return !isCut(node); });
    std::for_each(cutNodes, nodes.end(), [this](Node* node) { cut(node); });
    nodes.erase(cutNodes, nodes.end());
    remove_nodes(nodes, document);
}

void RangeContents::appendTextTo(Xstring& text) const {
    for (TagPlace tag = first; goes_on(tag, stop); tag = tag_behind(tag)) {
        if (tag.side != TagPlace::OPENING) continue;
        if (counts_units(tag.node)) {
            const Xstring& data = tag.node->getNodeValue();
            const Part part = partOf(tag.node, data);
            text += data.substr(part.from, part.to - part.from);
        } else if (tag.node->getNodeType() == Node::ELEMENT_NODE) {
            text += Unit{'<'};
            text += tag.node->getNodeName();
            text += Unit{'>'};
        }
    }
}

}  // namespace qvox

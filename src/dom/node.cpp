#include <qvox/dom.h>

#include "dom/copy.h"
#include "dom/document.h"
#include "dom/dom_implementation.h"
#include "dom/normalize.h"
#include "dom/tree.h"

namespace qvox {

namespace {

const Xstring TEXT_NAME("#text");
const Xstring CDATA_SECTION_NAME("#cdata-section");
const Xstring COMMENT_NAME("#comment");
const Xstring DOCUMENT_NAME("#document");
const Xstring DOCUMENT_FRAGMENT_NAME("#document-fragment");

void check_acceptable(const Node* parent, const Node* child, const char* message) {
    if (!Tree::accepts(parent, child)) {
        throw DOMException(DOMException::HIERARCHY_REQUEST_ERR, message);
    }
}

// A document, which has no owner document, takes nodes of every document.
void check_same_document(const Node* parent, const Node* child, const char* message) {
    const Document* document = parent->getOwnerDocument();
    if (document != nullptr && document != child->getOwnerDocument()) {
        throw DOMException(DOMException::WRONG_DOCUMENT_ERR, message);
    }
}

Node* found_or_raise(Node* node, const char* message) {
    if (node == nullptr) throw DOMException(DOMException::NOT_FOUND_ERR, message);
    return node;
}

}  // namespace

Node::~Node() {
    Tree::releaseDying(this);
    if (hasResults != 0) Tree::documentOf(this)->forgetContext(this);
}

void* Node::operator new(std::size_t size) { return NodeBlock::takeSingle(size); }

void Node::operator delete(void* node) {
    if (node != nullptr) NodeBlock::ofSingle(node).release(1);
}

Node* Node::appendChild(Node* newChild) {
    check_acceptable(this, newChild, "child node is not acceptable");
    check_same_document(this, newChild, "child node document is different");
    const DocumentGuard guard(this);
    return Tree::appendChildNoCheck(this, newChild);
}

Node* Node::insertBefore(Node* newChild, Node* refChild) {
    check_acceptable(this, newChild, "child node is not acceptable");
    const DocumentGuard guard(this);
    Node* inserted = Tree::insertBeforeNoCheck(this, newChild, refChild);
    return found_or_raise(inserted, "ref child node not found");
}

Node* Node::replaceChild(Node* newChild, Node* oldChild) {
    check_acceptable(this, newChild, "new child node is not acceptable");
    check_same_document(this, newChild, "new child node document is different");
    const DocumentGuard guard(this);
    return found_or_raise(Tree::replaceChildNoCheck(this, newChild, oldChild),
                          "old child node not found");
}

Node* Node::removeChild(Node* oldChild) {
    const DocumentGuard guard(this);
    return found_or_raise(Tree::removeChildNoCheck(this, oldChild), "old child node not found");
}

Node* Node::cloneNode(bool deep) const {
    auto* self = const_cast<Node*>(this);
    if (getNodeType() == ATTRIBUTE_NODE) return self;
    const DocumentGuard guard(this);
    return copy_tree(self, deep, nullptr);
}

void Node::normalize() {
    const DocumentGuard guard(this);
    normalize_tree(this);
}

bool Node::isSupported(const Xstring& feature, const Xstring& version) const {
    const DocumentImpl* document = Tree::documentOf(this);
    DOMImplementation* implementation =
        document != nullptr ? document->getImplementation() : &defaultImplementation;
    return implementation->hasFeature(feature, version);
}

NamedNodeMap* Node::getAttributes() const { return nullptr; }

NodeList* Node::getChildNodes() const { return &Tree::childListOf(this); }

Node* Node::getFirstChild() const { return Tree::firstChildOf(this); }

Node* Node::getLastChild() const { return Tree::lastChildOf(this); }

Node* Node::getNextSibling() const { return NodeLinks::nextSibling(this); }

Node* Node::getPreviousSibling() const {
    const DocumentGuard guard(this);
    return Tree::previousSiblingNoLock(this);
}

bool Node::hasChildNodes() const { return Tree::firstChildOf(this) != nullptr; }

bool Node::hasAttributes() const { return false; }

Node* Node::getParentNode() const { return Tree::parentOf(this); }

Document* Node::getOwnerDocument() const { return NodeLinks::blockOf(this).getDocument(); }

const Xstring& Node::getNodeName() const {
    switch (getNodeType()) {
        case TEXT_NODE: return TEXT_NAME;
        case CDATA_SECTION_NODE: return CDATA_SECTION_NAME;
        case COMMENT_NODE: return COMMENT_NAME;
        case DOCUMENT_NODE: return DOCUMENT_NAME;
        case DOCUMENT_FRAGMENT_NODE: return DOCUMENT_FRAGMENT_NAME;
        default: return Xstring::Null;
    }
}

const Xstring& Node::getNodeValue() const { return Xstring::Null; }

const Xstring& Node::getLocalName() const { return Xstring::Null; }

const Xstring& Node::getNamespaceURI() const { return Xstring::Null; }

const Xstring& Node::getPrefix() const { return Xstring::Null; }

void Node::setNodeValue(const Xstring& /*nodeValue*/) {}

void Node::setPrefix(const Xstring& /*prefix*/) {}

}  // namespace qvox

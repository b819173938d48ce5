#include "dom/document.h"

#include <mutex>
#include <utility>

#include "dom/arguments.h"
#include "dom/attr.h"
#include "dom/character_data.h"
#include "dom/copy.h"
#include "dom/element.h"
#include "dom/small_nodes.h"
#include "dom/tag_search.h"
#include "dom/tree.h"
#include "traversal/node_iterator.h"
#include "traversal/tree_walker.h"

namespace qvox {

namespace {

[[noreturn]] void not_supported(const char* message) {
    throw DOMException(DOMException::NOT_SUPPORTED_ERR, message);
}

// The documents that there are.
std::mutex livingLock;
std::map<const Document*, DocumentImpl*>& living() {
    static auto* const documents = new std::map<const Document*, DocumentImpl*>;  // for good
    return *documents;
}

}  // namespace

DocumentImpl::DocumentImpl(DOMImplementation* domImplementation)
    : Document(NodeHome(this)), implementation(domImplementation), abandoned(this) {
    const std::lock_guard<std::mutex> guard(livingLock);
    living().emplace(this, this);
}

// What it stands in may be a part of its own tree.
DocumentImpl::~DocumentImpl() {
    {
        const std::lock_guard<std::mutex> guard(livingLock);
        living().erase(this);
    }
    Tree::releaseDying(this);
    for (const auto& entry : tmpLists) NodeLinks::setHasResults(entry.second->getContext(), false);
    destroyTree();
}

// As long as nothing of a tree was touched since it was made, all that is in its memory can go with
// that, and only nodes apart, such as the document type, have to be looked for: they are children
// of the document.
void DocumentImpl::destroyTree() {
    if (memory == nullptr || memory->wasTouched() || NodeLinks::blockOf(this).wasTouched()) {
        return Tree::destroyContent(this);
    }
    for (Node* child = Tree::firstChildOf(this); child != nullptr;) {
        Node* const done = std::exchange(child, NodeLinks::next(child));
        if (NodeLinks::blockOf(done).isSingle()) Tree::destroy(done);
    }
    memory->drop();
}

NodeMemory& DocumentImpl::makeMemory(Document* nodesDocument) {
    memory = std::make_unique<NodeMemory>(nodesDocument);
    return *memory;
}

DocumentImpl* DocumentImpl::livingOne(const Document* document) {
    const std::lock_guard<std::mutex> guard(livingLock);
    const auto entry = living().find(document);
    return entry != living().end() ? entry->second : nullptr;
}

Attr* DocumentImpl::createAttribute(const Xstring& name) {
    return createAttributeNS(Xstring::Null, name);
}

Attr* DocumentImpl::createAttributeNS(const Xstring& namespaceURI, const Xstring& qualifiedName) {
    check_name(qualifiedName, "invalid attribute name");
    AttrImpl::Init init;
    init.namespaceURI = units_of(namespaceURI);
    init.qualifiedName = units_of(qualifiedName);
    return new AttrImpl(init, this);
}

CDATASection* DocumentImpl::createCDATASection(const Xstring& data) {
    refuseInHtml("html document can't create CDATA Section");
    return new CDATASectionImpl(units_of(data), this);
}

Comment* DocumentImpl::createComment(const Xstring& data) {
    return new CommentImpl(units_of(data), this);
}

DocumentFragment* DocumentImpl::createDocumentFragment() { return new DocumentFragmentImpl(this); }

Element* DocumentImpl::createElement(const Xstring& tagName) {
    return createElementNS(Xstring::Null, tagName);
}

Element* DocumentImpl::createElementNS(const Xstring& namespaceURI, const Xstring& qualifiedName) {
    check_name(qualifiedName, "invalid element name");
    return new ElementImpl(units_of(namespaceURI), units_of(qualifiedName), this);
}

EntityReference* DocumentImpl::createEntityReference(const Xstring& name) {
    check_name(name, "invalid entity name");
    return new EntityReferenceImpl(units_of(name), this);
}

ProcessingInstruction* DocumentImpl::createProcessingInstruction(const Xstring& target,
                                                                 const Xstring& data) {
    check_name(target, "invalid processing instruction target name");
    refuseInHtml("html document can't create Processing Instruction");
    return new ProcessingInstructionImpl(units_of(target), units_of(data), this);
}

Text* DocumentImpl::createTextNode(const Xstring& data) {
    return new TextImpl(units_of(data), this);
}

Node* DocumentImpl::firstChildOfType(int type) const {
    Node* child = Tree::firstChildOf(this);
    while (child != nullptr && child->getNodeType() != type) {
        child = Tree::nextSiblingNoLock(child);
    }
    return child;
}

DocumentType* DocumentImpl::getDoctype() const {
    return static_cast<DocumentType*>(firstChildOfType(DOCUMENT_TYPE_NODE));
}

Element* DocumentImpl::getDocumentElement() const {
    return static_cast<Element*>(firstChildOfType(ELEMENT_NODE));
}

ProcessingInstruction* DocumentImpl::getXmlDeclaration() const {
    Node* first = Tree::firstChildOf(this);
    if (first == nullptr || first->getNodeType() != PROCESSING_INSTRUCTION_NODE) return nullptr;
    auto* instruction = static_cast<ProcessingInstruction*>(first);
    return instruction->getTarget() == "xml" ? instruction : nullptr;
}

bool DocumentImpl::isHtmlDocument() const {
    const Element* root = getDocumentElement();
    return root != nullptr && wide_narrow_casecompare(root->getNodeName().data(), "HTML") == 0;
}

void DocumentImpl::refuseInHtml(const char* message) const {
    if (isHtmlDocument()) not_supported(message);
}

Element* DocumentImpl::getElementById(const Xstring& elementId) {
    const DocumentGuard guard(this);
    return search_id(getDocumentElement(), elementId);
}

NodeList* DocumentImpl::getElementsByTagName(const Xstring& tagName) {
    const DocumentGuard guard(this);
    return search_tag_name(*this, getDocumentElement(), tagName);
}

NodeList* DocumentImpl::getElementsByTagNameNS(const Xstring& namespaceURI,
                                               const Xstring& localName) {
    const DocumentGuard guard(this);
    return search_tag_name_ns(*this, getDocumentElement(), namespaceURI, localName);
}

Node* DocumentImpl::importNode(Node* importedNode, bool deep) {
    const DocumentGuard guard(this);
    if (importedNode == nullptr) not_supported("TreeWalker root is null");
    switch (importedNode->getNodeType()) {
        case DOCUMENT_NODE: not_supported("a document can't be imported");
        case DOCUMENT_TYPE_NODE: not_supported("a document type can't be imported");
        default: return copy_tree(importedNode, deep, this);
    }
}

NodeIterator* DocumentImpl::createNodeIterator(Node* root, unsigned long whatToShow,
                                               NodeFilter* filter, bool expandEntityReferences) {
    if (root == nullptr) not_supported("NodeIterator root is null");
    return new NodeIteratorImpl(root, whatToShow, filter, expandEntityReferences);
}

TreeWalker* DocumentImpl::createTreeWalker(Node* root, unsigned long whatToShow, NodeFilter* filter,
                                           bool expandEntityReferences) {
    if (root == nullptr) not_supported("TreeWalker root is null");
    return new TreeWalkerImpl(root, whatToShow, filter, expandEntityReferences);
}

void DocumentImpl::freeTreeWalker(TreeWalker* walker) {
    delete static_cast<TreeWalkerImpl*>(walker);
}

void DocumentImpl::freeNodeIterator(NodeIterator* iterator) {
    delete static_cast<NodeIteratorImpl*>(iterator);
}

ResultList* DocumentImpl::tmpNodeList(Node* context) {
    const auto entry = tmpLists.find(context);
    if (entry != tmpLists.end()) {
        entry->second->clear();
        return entry->second.get();
    }
    auto made = std::make_unique<ResultList>(this, context);
    ResultList* list = made.get();
    tmpLists.emplace(context, std::move(made));
    NodeLinks::setHasResults(context, true);
    return list;
}

void DocumentImpl::freeTmpNodeList(const ResultList& list) {
    const DocumentGuard guard(this);
    if (listsWithoutContext.erase(&list) != 0) return;
    NodeLinks::setHasResults(list.getContext(), false);
    tmpLists.erase(list.getContext());
}

// Without an allocation, since destructors call this.
void DocumentImpl::forgetContext(Node* context) {
    const DocumentGuard guard(this);
    ResultLists::node_type entry = tmpLists.extract(context);
    entry.mapped()->reset();
    entry.key() = entry.mapped().get();
    listsWithoutContext.insert(std::move(entry));
}

}  // namespace qvox

#pragma once

#include <atomic>
#include <map>
#include <memory>

#include <qvox/dom.h>

#include "dom/name_pool.h"
#include "dom/node_keeper.h"
#include "dom/node_list.h"
#include "dom/node_memory.h"
#include "dom/tree_lock.h"

namespace qvox {

class DocumentImpl final : public Document {
public:
    explicit DocumentImpl(DOMImplementation* domImplementation);
    ~DocumentImpl() override;

    int getNodeType() const override { return DOCUMENT_NODE; }
    Document* getOwnerDocument() const override { return nullptr; }

    Attr* createAttribute(const Xstring& name) override;
    Attr* createAttributeNS(const Xstring& namespaceURI, const Xstring& qualifiedName) override;
    CDATASection* createCDATASection(const Xstring& data) override;
    Comment* createComment(const Xstring& data) override;
    DocumentFragment* createDocumentFragment() override;
    Element* createElement(const Xstring& tagName) override;
    Element* createElementNS(const Xstring& namespaceURI, const Xstring& qualifiedName) override;
    EntityReference* createEntityReference(const Xstring& name) override;
    ProcessingInstruction* createProcessingInstruction(const Xstring& target,
                                                       const Xstring& data) override;
    Text* createTextNode(const Xstring& data) override;
    DocumentType* getDoctype() const override;
    Element* getDocumentElement() const override;
    Element* getElementById(const Xstring& elementId) override;
    NodeList* getElementsByTagName(const Xstring& tagName) override;
    NodeList* getElementsByTagNameNS(const Xstring& namespaceURI,
                                     const Xstring& localName) override;
    DOMImplementation* getImplementation() const override { return implementation; }
    Node* importNode(Node* importedNode, bool deep) override;

    NodeIterator* createNodeIterator(Node* root, unsigned long whatToShow, NodeFilter* filter,
                                     bool expandEntityReferences) override;
    TreeWalker* createTreeWalker(Node* root, unsigned long whatToShow, NodeFilter* filter,
                                 bool expandEntityReferences) override;
    void freeTreeWalker(TreeWalker* walker) override;
    void freeNodeIterator(NodeIterator* iterator) override;

    Range* createRange() override;
    void freeRange(Range* range) override;

    NamePool& getNames() { return names; }
    TreeLock& getLock() { return lock; }
    // For nodes that come into the tree as it is made, and belong to that document.
    NodeMemory& makeMemory(Document* nodesDocument);

    // The first child if it is the XML declaration, else null.
    ProcessingInstruction* getXmlDeclaration() const;

    // The emptied result list of searches on `context`.
    ResultList* tmpNodeList(Node* context);
    void freeTmpNodeList(const ResultList& list);
    // The context node goes: its result list stays for whoever has it, and for nobody else.
    void forgetContext(Node* context);

    // Takes over a node that has no place and that nobody else would free.
    void adopt(Node* node) { abandoned.take(node); }

    // Whether nodes of this document may stand in the trees of others. Once they may, they always
    // may.
    bool hasTravellers() const { return travellers.load(std::memory_order_relaxed); }
    void setHasTravellers() { travellers.store(true, std::memory_order_relaxed); }
    // The document, or null where it has gone: such nodes can outlive theirs.
    static DocumentImpl* livingOne(const Document* document);

private:
    using ResultLists = std::map<const void*, std::unique_ptr<ResultList>>;

    Node* firstChildOfType(int type) const;
    void destroyTree();
    bool isHtmlDocument() const;
    void refuseInHtml(const char* message) const;

    DOMImplementation* implementation;
    std::unique_ptr<NodeMemory> memory;  // where the tree was made, or null
    NamePool names;
    ResultLists tmpLists;             // by context node
    ResultLists listsWithoutContext;  // by themselves
    NodeKeeper abandoned;
    std::atomic<bool> travellers{false};
    TreeLock lock;  // held by changes of the tree and by searches
};

}  // namespace qvox

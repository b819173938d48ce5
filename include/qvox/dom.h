/// \file
/// The tree (DOM Level 2 Core).
///
/// Who owns what. A document owns everything that is attached to it; free it with
/// DOMParser::free(Document*), after the ranges, iterators and walkers on it. A node that was made,
/// cloned, imported, removed or replaced, and isn't attached, is the caller's: attach it, or free
/// it with DOMParser::freeNode while its document lives. What an operation detaches without
/// returning it, as normalize does, the document keeps in whose tree it stood, until its end or
/// until it is attached or freed. A document belongs to nobody, wherever it stands, be it in a map
/// or under a document type, and be it a copy: free it before or after that. Nodes may stand in
/// another document's tree; those that are still used need their own document. A list that a search
/// returned belongs to the document; DOMParser::free(NodeList*) frees it earlier. Nothing else is
/// freed by callers. A string that a getter returns by reference lives as long as its node and is
/// valid until that value changes; names live as long as the document.
///
/// Threads. Each document has a lock of its own, which the operations that change a tree, searches
/// and copies hold, and where they need it the two sibling getters, which may meet a change;
/// several threads may read one tree at a time, searches and clones included. The other getters
/// take no lock, and must not meet a change of what they read. Setters of values (setData,
/// setNodeValue and their kin) and the factories take no lock: changes by them are for the caller
/// to order.
///
/// Nothing here recurses on the depth of a tree. What running out of memory does is said at Parser.
/// Offsets and lengths count 16-bit units.
#ifndef QVOX_DOM_H
#define QVOX_DOM_H

#include <atomic>
#include <cstddef>
#include <cstdint>

#include <qvox/exception.h>
#include <qvox/export.h>
#include <qvox/range.h>
#include <qvox/traversal.h>
#include <qvox/xstring.h>

namespace qvox {

class Document;
class DOMImplementation;
class NamedNodeMap;
class NodeCollection;
class NodeList;
struct LentText;
struct NodeHome;

/// The base of every object in a tree. The operations are those of all node types; a type without
/// the thing asked for answers null, false or Xstring::Null.
class QVOX_API Node {
public:
    /// What getNodeType answers.
    enum NodeType : int {
        ELEMENT_NODE = 1,
        ATTRIBUTE_NODE = 2,
        TEXT_NODE = 3,
        CDATA_SECTION_NODE = 4,
        ENTITY_REFERENCE_NODE = 5,
        ENTITY_NODE = 6,
        PROCESSING_INSTRUCTION_NODE = 7,
        COMMENT_NODE = 8,
        DOCUMENT_NODE = 9,
        DOCUMENT_TYPE_NODE = 10,
        DOCUMENT_FRAGMENT_NODE = 11,
        NOTATION_NODE = 12
    };

    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

protected:
    // Nodes are freed by the calls named above only: not all of them are allocated one by one.
    virtual ~Node();

public:
    /// Appends a child, which leaves its old place first. A fragment gives all its children up and
    /// stays, empty, the caller's. Returns `newChild`. DOMException HIERARCHY_REQUEST_ERR for a
    /// null child, a type that can't stand here, and a node that would come under itself;
    /// WRONG_DOCUMENT_ERR for another document's node (not checked under a document).
    virtual Node* appendChild(Node* newChild);

    /// A copy without a parent, the caller's; with `deep`, of the whole subtree. The attributes of
    /// an element are always copied. An attribute is not: it answers itself. The nodes in a deep
    /// copy of a document still belong to the document that was copied: free the copy first.
    virtual Node* cloneNode(bool deep) const;
    /// Null but for an element.
    virtual NamedNodeMap* getAttributes() const;
    /// Live and owned by the node; for a node that never had a child an empty list that all such
    /// nodes share.
    virtual NodeList* getChildNodes() const;
    /// Null where there is none.
    virtual Node* getFirstChild() const;
    /// Null where there is none.
    virtual Node* getLastChild() const;
    /// Null for a node without namespace.
    virtual const Xstring& getLocalName() const;
    /// Null for a node without namespace.
    virtual const Xstring& getNamespaceURI() const;
    /// In constant time.
    virtual Node* getNextSibling() const;
    /// The name of an element, attribute, entity or notation, the target of a processing
    /// instruction, and "#text" and its like for the others.
    virtual const Xstring& getNodeName() const;
    /// A NodeType.
    virtual int getNodeType() const = 0;
    /// The value of an attribute, the data of a text, comment or processing instruction, null for
    /// the others.
    virtual const Xstring& getNodeValue() const;
    /// Null in a document and in a document type.
    virtual Document* getOwnerDocument() const;
    /// Null for an attribute, which is in no child list.
    virtual Node* getParentNode() const;
    /// Empty for a name with a namespace and without a prefix, null for one without a namespace.
    virtual const Xstring& getPrefix() const;
    /// In constant time.
    virtual Node* getPreviousSibling() const;
    /// False but for an element that has some.
    virtual bool hasAttributes() const;
    /// Whether there are any.
    virtual bool hasChildNodes() const;

    /// Inserts a child in front of `refChild`, or at the end where that is null or this node never
    /// had a child. Returns `newChild`; for a fragment that goes in front of a child, the last
    /// child that it moved, or `refChild` where it was empty. Documents are not compared.
    /// DOMException HIERARCHY_REQUEST_ERR as in appendChild; NOT_FOUND_ERR where `refChild` is not
    /// a child, which leaves `newChild` detached from its old place.
    virtual Node* insertBefore(Node* newChild, Node* refChild);
    /// As DOMImplementation::hasFeature.
    virtual bool isSupported(const Xstring& feature, const Xstring& version) const;
    /// Joins the Text nodes of this subtree that stand side by side. The ones that were joined to
    /// others are detached and stay allocated until the document is freed. CDATA sections and empty
    /// Text nodes stay.
    virtual void normalize();
    /// Takes a child out and returns it; it is the caller's then. DOMException NOT_FOUND_ERR.
    virtual Node* removeChild(Node* oldChild);
    /// Puts `newChild` in the place of `oldChild` and returns the latter, which is the caller's
    /// then. A fragment becomes a child itself. DOMException HIERARCHY_REQUEST_ERR and
    /// WRONG_DOCUMENT_ERR as in appendChild; NOT_FOUND_ERR, which may leave `newChild` detached
    /// from its old place.
    virtual Node* replaceChild(Node* newChild, Node* oldChild);
    /// Does nothing for a type without value.
    virtual void setNodeValue(const Xstring& nodeValue);
    /// Does nothing but for an element or attribute. DOMException NAMESPACE_ERR for one without
    /// namespace.
    virtual void setPrefix(const Xstring& prefix);

    /// Nodes are made by documents.
    static void* operator new(std::size_t size);
    /// Nodes are freed by DOMParser.
    static void operator delete(void* node);

protected:
    /// A node, unattached, of the document that is told there.
    explicit Node(const NodeHome& home) noexcept;

private:
    friend struct NodeLinks;

    // What has this node: another one, or a collection.
    union Holder {
        Node* node;
        NodeCollection* collection;
    };

    Holder holder = {nullptr};
    // The node behind this one, where it stands, and whether this one is a child: one word, so that
    // a step to the next sibling needs no lock.
    std::atomic<std::uintptr_t> next{0};
    Node* previous = nullptr;  // the node in front of this one; the last one for the first
    std::atomic<void*> children{nullptr};
    // These change with the lock of the document held.
    unsigned index : 30;      // among the siblings, once they have been counted
    unsigned isCounted : 1;   // whether the children have been
    unsigned hasResults : 1;  // whether the document has a search's result for this node
    // Where it lies in the memory that it may share with others, in two parts. This never changes,
    // and may be read while the rest does.
    unsigned short placeLow;
    unsigned char placeHigh;
    // These change with the tree.
    unsigned char standing : 3;     // what the holder is
    unsigned char isSpecified : 1;  // of an attribute
};

/// An ordered collection of nodes.
class QVOX_API NodeList {
public:
    /// How many there are.
    virtual int getLength() const = 0;
    /// Null for an index that is out of range. In constant time once the list has been gone
    /// through, and near either end or the item that was asked for last; else in time by the
    /// length.
    virtual Node* item(int index) const = 0;

protected:
    ~NodeList() = default;
};

/// Nodes by name, in the order of arrival: the attributes of an element, the entities and notations
/// of a document type. The map of an element without attributes is shared by all such elements and
/// refuses changes. Names compare unit by unit; a null string counts as empty.
class QVOX_API NamedNodeMap {
public:
    /// How many there are.
    virtual int getLength() const = 0;
    /// Null where there is none.
    virtual Node* getNamedItem(const Xstring& name) const = 0;
    /// The same by namespace and local name.
    virtual Node* getNamedItemNS(const Xstring& namespaceURI, const Xstring& localName) const = 0;
    /// Null for an index that is out of range.
    virtual Node* item(int index) const = 0;
    /// Takes a node out and returns it; it is the caller's then, except an attribute with a
    /// declared default, which stays and takes that value. DOMException NOT_FOUND_ERR.
    virtual Node* removeNamedItem(const Xstring& name) = 0;
    /// The same by namespace and local name.
    virtual Node* removeNamedItemNS(const Xstring& namespaceURI, const Xstring& localName) = 0;
    /// Puts a node in at the end and returns the node of the same name that it replaces, which is
    /// the caller's then, or null. A node that stands elsewhere leaves that place. DOMException
    /// NOT_SUPPORTED_ERR for the shared empty map.
    virtual Node* setNamedItem(Node* node) = 0;
    /// The same. A node without namespace is not taken: null, and nothing happens.
    virtual Node* setNamedItemNS(Node* node) = 0;

protected:
    ~NamedNodeMap() = default;
};

/// A node whose content is text. The operations raise DOMException INDEX_SIZE_ERR for an offset
/// below 0 or behind the end, and for a negative count; a count that goes past the end is cut.
class QVOX_API CharacterData : public Node {
public:
    /// Puts text behind the data.
    virtual void appendData(const Xstring& arg);
    /// Takes a stretch out of the data.
    virtual void deleteData(int offset, int count);
    /// The text. Valid until it changes.
    virtual const Xstring& getData() const;
    /// In 16-bit units.
    virtual int getLength() const;
    /// Puts text in front of a unit.
    virtual void insertData(int offset, const Xstring& arg);
    /// Puts text in the place of a stretch.
    virtual void replaceData(int offset, int count, const Xstring& arg);
    /// Puts text in the place of all the data.
    virtual void setData(const Xstring& arg);
    /// A copy of a stretch.
    virtual Xstring substringData(int offset, int count) const;

    /// As getData.
    const Xstring& getNodeValue() const override;
    /// As setData.
    void setNodeValue(const Xstring& nodeValue) override;

protected:
    /// A node with a copy of that text.
    CharacterData(const unsigned short* text, const NodeHome& home);
    /// A node that borrows that text.
    CharacterData(const LentText& text, const NodeHome& home) noexcept;
    ~CharacterData() override = default;

private:
    Xstring data;
};

/// Text between markup.
class QVOX_API Text : public CharacterData {
public:
    /// Cuts the node in two at the offset. The new node holds the rest and comes right behind this
    /// one, or is the caller's where this one has no parent. It is a Text in any case.
    virtual Text* splitText(int offset) = 0;

protected:
    using CharacterData::CharacterData;
    ~Text() override = default;
};

/// A text that was written, and will be, as a CDATA section.
class QVOX_API CDATASection : public Text {
protected:
    using Text::Text;
    ~CDATASection() override = default;
};

/// A comment, without its `<!--` and `-->`.
class QVOX_API Comment : public CharacterData {
protected:
    using CharacterData::CharacterData;
    ~Comment() override = default;
};

class Element;

/// An attribute. Its value is in getValue; a Text child exists only after setValue.
class QVOX_API Attr : public Node {
public:
    /// As getNodeName.
    virtual const Xstring& getName() const = 0;
    /// The element that has this attribute, or null.
    virtual Element* getOwnerElement() const = 0;
    /// False for a declared default and for a new attribute without value.
    virtual bool getSpecified() const = 0;
    /// After normalisation, where it was read. Valid until it changes.
    virtual const Xstring& getValue() const = 0;
    /// Makes the attribute a specified one.
    virtual void setValue(const Xstring& value) = 0;

protected:
    using Node::Node;
    ~Attr() override = default;
};

/// An element. Names are checked against XML 1.0's Name, with the empty name allowed, and not for
/// their use of prefixes. An attribute or element made without a namespace has no local name.
class QVOX_API Element : public Node {
public:
    /// Xstring::Null where there is no such attribute.
    virtual const Xstring& getAttribute(const Xstring& name) const = 0;
    /// The same by namespace and local name.
    virtual const Xstring& getAttributeNS(const Xstring& namespaceURI,
                                          const Xstring& localName) const = 0;
    /// Null where there is none.
    virtual Attr* getAttributeNode(const Xstring& name) const = 0;
    /// The same by namespace and local name.
    virtual Attr* getAttributeNodeNS(const Xstring& namespaceURI,
                                     const Xstring& localName) const = 0;
    /// The descendants of that name, "*" for all, in document order as they are now. Each node has
    /// one such list, which its next search empties and fills again.
    virtual NodeList* getElementsByTagName(const Xstring& name) = 0;
    /// The same by namespace and local name. An element without namespace is never found.
    virtual NodeList* getElementsByTagNameNS(const Xstring& namespaceURI,
                                             const Xstring& localName) = 0;
    /// As getNodeName.
    virtual const Xstring& getTagName() const = 0;
    /// Whether there is one, a declared default included.
    virtual bool hasAttribute(const Xstring& name) const = 0;
    /// The same by namespace and local name.
    virtual bool hasAttributeNS(const Xstring& namespaceURI, const Xstring& localName) const = 0;
    /// No error where there is none. An attribute with a declared default takes that value instead.
    /// A removed attribute stays allocated until the document is freed: take it out with
    /// removeAttributeNode to free it earlier. DOMException INVALID_CHARACTER_ERR.
    virtual void removeAttribute(const Xstring& name) = 0;
    /// The same by namespace and local name.
    virtual void removeAttributeNS(const Xstring& namespaceURI, const Xstring& localName) = 0;
    /// Takes out the attribute of that name, which need not be `attr`, and returns it: the caller's
    /// then, unless it has a declared default and stays. Null where there is none.
    virtual Attr* removeAttributeNode(Attr* attr) = 0;
    /// Sets the value of an attribute, a new one where there is none. DOMException
    /// INVALID_CHARACTER_ERR.
    virtual void setAttribute(const Xstring& name, const Xstring& value) = 0;
    /// The same; an attribute that is there keeps its prefix. A null namespace adds nothing.
    virtual void setAttributeNS(const Xstring& namespaceURI, const Xstring& qualifiedName,
                                const Xstring& value) = 0;
    /// Attaches an attribute and returns the one of the same name that it replaces, which is the
    /// caller's then, or null. DOMException INUSE_ATTRIBUTE_ERR for another element's attribute.
    virtual Attr* setAttributeNode(Attr* attr) = 0;
    /// The same. An attribute without namespace is not taken: null, and nothing happens.
    virtual Attr* setAttributeNodeNS(Attr* attr) = 0;

protected:
    using Node::Node;
    ~Element() override = default;
};

/// Nodes without a common parent, to be put into a tree in one call.
class QVOX_API DocumentFragment : public Node {
protected:
    using Node::Node;
    ~DocumentFragment() override = default;
};

/// A reference to an entity, `&` and a name and `;`. A parse makes none.
class QVOX_API EntityReference : public Node {
protected:
    using Node::Node;
    ~EntityReference() override = default;
};

/// A declared entity. A parameter entity's name begins with "%". Identifiers are null where the
/// declaration has none. It has no children: the value of an internal entity is in the text of
/// DocumentType::getInternalSubset.
class QVOX_API Entity : public Node {
public:
    /// Null for a parsed entity.
    virtual const Xstring& getNotationName() const = 0;
    /// Null where there is none.
    virtual const Xstring& getPublicId() const = 0;
    /// Null for an internal entity.
    virtual const Xstring& getSystemId() const = 0;

protected:
    using Node::Node;
    ~Entity() override = default;
};

/// A declared notation. An empty identifier reads as null.
class QVOX_API Notation : public Node {
public:
    /// Null where there is none.
    virtual const Xstring& getPublicId() const = 0;
    /// Null where there is none.
    virtual const Xstring& getSystemId() const = 0;

protected:
    using Node::Node;
    ~Notation() override = default;
};

/// A processing instruction; also the XML declaration of a parsed document, with the target "xml".
class QVOX_API ProcessingInstruction : public Node {
public:
    /// Null for `<?target?>`.
    virtual const Xstring& getData() const = 0;
    /// As getNodeName.
    virtual const Xstring& getTarget() const = 0;
    /// Not looked at: `?>` in it ends the instruction where it is written.
    virtual void setData(const Xstring& data) = 0;

protected:
    using Node::Node;
    ~ProcessingInstruction() override = default;
};

/// The document type. Comments and processing instructions of the DTD are its children.
class QVOX_API DocumentType : public Node {
public:
    /// Null where there are none.
    virtual NamedNodeMap* getEntities() const = 0;
    /// The declarations of both subsets as text, without comments and processing instructions; null
    /// where there are none. Values stand in double quotes as they are. Made at the first call.
    virtual const Xstring& getInternalSubset() = 0;
    /// As getNodeName: the name of the root element.
    virtual const Xstring& getName() const = 0;
    /// Null where there are none.
    virtual NamedNodeMap* getNotations() const = 0;
    /// Null where there is none.
    virtual const Xstring& getPublicId() const = 0;
    /// Null where there is none.
    virtual const Xstring& getSystemId() const = 0;

protected:
    using Node::Node;
    ~DocumentType() override = default;
};

/// The root of a tree, and the factory of its nodes. What a factory returns is unattached and the
/// caller's. Names are checked against XML 1.0's Name, with the empty name allowed: DOMException
/// INVALID_CHARACTER_ERR. Namespaces are not checked.
class QVOX_API Document : public Node, public DocumentTraversal, public DocumentRange {
public:
    /// Without a namespace and without a value.
    virtual Attr* createAttribute(const Xstring& name) = 0;
    /// Without a value.
    virtual Attr* createAttributeNS(const Xstring& namespaceURI, const Xstring& qualifiedName) = 0;
    /// DOMException NOT_SUPPORTED_ERR in a document whose root is "html" in any case.
    virtual CDATASection* createCDATASection(const Xstring& data) = 0;
    /// The data is not looked at.
    virtual Comment* createComment(const Xstring& data) = 0;
    /// Empty.
    virtual DocumentFragment* createDocumentFragment() = 0;
    /// Without a namespace.
    virtual Element* createElement(const Xstring& tagName) = 0;
    /// With the prefix and local part that the name has.
    virtual Element* createElementNS(const Xstring& namespaceURI, const Xstring& qualifiedName) = 0;
    /// The reference has no children, whatever the entity.
    virtual EntityReference* createEntityReference(const Xstring& name) = 0;
    /// DOMException NOT_SUPPORTED_ERR in a document whose root is "html" in any case.
    virtual ProcessingInstruction* createProcessingInstruction(const Xstring& target,
                                                               const Xstring& data) = 0;
    /// Any text: markup in it is escaped where it is written.
    virtual Text* createTextNode(const Xstring& data) = 0;
    /// The first document type among the children, or null.
    virtual DocumentType* getDoctype() const = 0;
    /// The first element among the children, or null.
    virtual Element* getDocumentElement() const = 0;
    /// The first element with an attribute of the declared type ID and that value, or null.
    /// DOMException NOT_SUPPORTED_ERR without a document element.
    virtual Element* getElementById(const Xstring& elementId) = 0;
    /// As in Element, with the document element among what may be found. DOMException
    /// NOT_SUPPORTED_ERR without a document element.
    virtual NodeList* getElementsByTagName(const Xstring& tagName) = 0;
    /// The same by namespace and local name.
    virtual NodeList* getElementsByTagNameNS(const Xstring& namespaceURI,
                                             const Xstring& localName) = 0;
    /// The one of the process.
    virtual DOMImplementation* getImplementation() const = 0;
    /// A copy of another document's node for this one, the caller's; with `deep`, of its subtree.
    /// The other document is not locked. DOMException NOT_SUPPORTED_ERR for null, a document and a
    /// document type.
    virtual Node* importNode(Node* importedNode, bool deep) = 0;

protected:
    using Node::Node;
    ~Document() override = default;
};

/// What doesn't depend on a document. There is one in the process: DOMParser::getImplementation.
class QVOX_API DOMImplementation {
public:
    /// A new document with a root element and, unless null, a document type, which it then owns.
    /// The caller's. DOMException INVALID_CHARACTER_ERR for the name.
    virtual Document* createDocument(const Xstring& namespaceURI, const Xstring& qualifiedName,
                                     DocumentType* doctype) = 0;
    /// A new document type without a document, the caller's. The name is not checked.
    virtual DocumentType* createDocumentType(const Xstring& qualifiedName, const Xstring& publicId,
                                             const Xstring& systemId) = 0;
    /// As DOMParser::free(Document*).
    virtual void freeDocument(Document* document) = 0;
    /// "XML" and "HTML" in version "1.0", "CORE", "Traversal" and "Range" in "2.0", each also with
    /// a null version. The feature's case doesn't matter.
    virtual bool hasFeature(const Xstring& feature, const Xstring& version) = 0;

protected:
    ~DOMImplementation() = default;
};

}  // namespace qvox

#endif

#include "dom/element.h"

#include "dom/arguments.h"
#include "dom/document.h"
#include "dom/tag_search.h"
#include "dom/tree.h"

namespace qvox {

namespace {

DocumentImpl& as_impl(Document* document) { return *static_cast<DocumentImpl*>(document); }

Xstring local_part(const Xstring& qualifiedName) {
    const Unit* colon = wide_find_unit(qualifiedName.data(), ':');
    return colon == nullptr ? qualifiedName : Xstring(colon + 1);
}

// A map may have nodes of other types, which are no attributes.
Attr* as_attribute(Node* node) {
    const bool isAttribute = node != nullptr && node->getNodeType() == Node::ATTRIBUTE_NODE;
    return isAttribute ? static_cast<Attr*>(node) : nullptr;
}

}  // namespace

ElementImpl::ElementImpl(const Unit* namespaceURI, const Unit* qualifiedName, Document* document)
    : Element(document), name(as_impl(document).getNames().nodeName(namespaceURI, qualifiedName)) {}

NamedNodeMapImpl& ElementImpl::attributeMap() const {
    if (!attributeSlot().wasUsed()) return emptyNamedNodeMap;
    return const_cast<ElementImpl*>(this)->ownAttributeMap();
}

NamedNodeMapImpl& ElementImpl::ownAttributeMap() {
    return attributeSlot().collectionOf<NamedNodeMapImpl>(this);
}

void ElementImpl::setPrefix(const Xstring& prefix) {
    change_name(this);
    name = as_impl(getOwnerDocument()).getNames().withPrefix(*name, prefix);
}

// So many that a map finds them sooner than a search.
bool ElementImpl::hasManyAttributes() const {
    std::size_t count = 0;
    const Node* node = firstAttribute();
    for (; node != nullptr && count < NodeCollection::FEW_NAMES; node = NodeLinks::next(node)) {
        ++count;
    }
    return node != nullptr;
}

const Xstring& ElementImpl::getAttribute(const Xstring& attributeName) const {
    const Attr* attribute = getAttributeNode(attributeName);
    return attribute != nullptr ? attribute->getValue() : Xstring::Null;
}

const Xstring& ElementImpl::getAttributeNS(const Xstring& namespaceURI,
                                           const Xstring& localName) const {
    const Attr* attribute = getAttributeNodeNS(namespaceURI, localName);
    return attribute != nullptr ? attribute->getValue() : Xstring::Null;
}

Attr* ElementImpl::getAttributeNode(const Xstring& attributeName) const {
    return as_attribute(hasManyAttributes() ? attributeMap().getNamedItem(attributeName)
                                            : find_named(firstAttribute(), attributeName));
}

Attr* ElementImpl::getAttributeNodeNS(const Xstring& namespaceURI, const Xstring& localName) const {
    return as_attribute(hasManyAttributes()
                            ? attributeMap().getNamedItemNS(namespaceURI, localName)
                            : find_named_ns(firstAttribute(), namespaceURI, localName));
}

bool ElementImpl::hasAttribute(const Xstring& attributeName) const {
    return getAttributeNode(attributeName) != nullptr;
}

bool ElementImpl::hasAttributeNS(const Xstring& namespaceURI, const Xstring& localName) const {
    return getAttributeNodeNS(namespaceURI, localName) != nullptr;
}

NodeList* ElementImpl::getElementsByTagName(const Xstring& tagName) {
    const DocumentGuard guard(this);
    return search_tag_name(*this, this, tagName);
}

NodeList* ElementImpl::getElementsByTagNameNS(const Xstring& namespaceURI,
                                              const Xstring& localName) {
    const DocumentGuard guard(this);
    return search_tag_name_ns(*this, this, namespaceURI, localName);
}

void ElementImpl::setAttribute(const Xstring& attributeName, const Xstring& value) {
    check_name(attributeName, "invalid attribute name");
    const DocumentGuard guard(this);
    if (Attr* attribute = getAttributeNode(attributeName)) return attribute->setValue(value);
    AttrImpl::Init init;
    init.qualifiedName = units_of(attributeName);
    init.value = units_of(value);
    init.specified = true;
    attachNew(init, false);
}

void ElementImpl::setAttributeNS(const Xstring& namespaceURI, const Xstring& qualifiedName,
                                 const Xstring& value) {
    check_name(qualifiedName, "invalid attribute name");
    const DocumentGuard guard(this);
    Attr* attribute = getAttributeNodeNS(namespaceURI, local_part(qualifiedName));
    if (attribute != nullptr) return attribute->setValue(value);
    AttrImpl::Init init;
    init.namespaceURI = units_of(namespaceURI);
    init.qualifiedName = units_of(qualifiedName);
    init.value = units_of(value);
    init.specified = true;
    attachNew(init, true);
}

Attr* ElementImpl::attach(Attr* attr, bool byNamespace) {
    if (attr == nullptr) return nullptr;
    Element* owner = attr->getOwnerElement();
    if (owner != nullptr && owner != this) {
        throw DOMException(DOMException::INUSE_ATTRIBUTE_ERR,
                           "attribute is already used by other element");
    }
    if (Tree::owns(attr, this)) {
        throw DOMException(DOMException::HIERARCHY_REQUEST_ERR, "child node is not acceptable");
    }
    const DocumentGuard guard(this);
    return put(attr, byNamespace);
}

// A replaced node that is no attribute can't be told to the caller, and goes to the document.
Attr* ElementImpl::put(Attr* attr, bool byNamespace) {
    Node* replaced = ownAttributeMap().putItem(attr, byNamespace);
    Attr* attribute = as_attribute(replaced);
    if (replaced != attribute) Tree::abandon(replaced, Tree::treeDocumentOfLiving(this));
    return attribute;
}

// An attribute that the map doesn't take is nobody's; one that it replaces may still be the
// caller's.
void ElementImpl::attachNew(const AttrImpl::Init& init, bool byNamespace) {
    OwnedNode<Attr> attr(new AttrImpl(init, getOwnerDocument()));
    Attr* replaced = attach(attr.get(), byNamespace);
    if (attr->getOwnerElement() == this) static_cast<void>(attr.release());
    if (replaced != nullptr) Tree::abandon(replaced, Tree::treeDocumentOfLiving(this));
}

void ElementImpl::removeAttribute(const Xstring& attributeName) {
    check_name(attributeName, "invalid attribute name");
    const DocumentGuard guard(this);
    drop(attributeMap().takeItem(attributeName));
}

void ElementImpl::removeAttributeNS(const Xstring& namespaceURI, const Xstring& localName) {
    check_name(localName, "invalid attribute local name");
    const DocumentGuard guard(this);
    drop(attributeMap().takeItemNS(namespaceURI, localName));
}

// A caller may have a removed attribute in hand, so it isn't destroyed yet.
void ElementImpl::drop(Node* attribute) {
    if (attribute == nullptr || Tree::elementWith(attribute) == this) return;
    Tree::abandon(attribute, Tree::treeDocumentOfLiving(this));
}

Attr* ElementImpl::removeAttributeNode(Attr* attr) {
    if (attr == nullptr) return nullptr;
    const DocumentGuard guard(this);
    NamedNodeMapImpl& map = attributeMap();
    Node* taken = attr->getNamespaceURI().isNull()
                      ? map.takeItem(attr->getName())
                      : map.takeItemNS(attr->getNamespaceURI(), attr->getLocalName());
    Attr* attribute = as_attribute(taken);
    if (taken != attribute) Tree::abandon(taken, Tree::treeDocumentOfLiving(this));
    return attribute;
}

}  // namespace qvox

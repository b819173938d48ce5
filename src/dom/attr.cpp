#include "dom/attr.h"

#include "dom/character_data.h"
#include "dom/document.h"
#include "dom/tree.h"

namespace qvox {

namespace {

DocumentImpl& as_impl(Document* document) { return *static_cast<DocumentImpl*>(document); }

bool is_character_data(const Node* node) {
    switch (node->getNodeType()) {
        case Node::TEXT_NODE:
        case Node::CDATA_SECTION_NODE:
        case Node::COMMENT_NODE: return true;
        default: return false;
    }
}

}  // namespace

AttrImpl::AttrImpl(const Init& init, Document* document)
    : Attr(document),
      name(init.namespaceURI, init.qualifiedName, as_impl(document)),
      attributeType(as_impl(document).getNames().intern(init.attributeType)),
      defaultValue(as_impl(document).getNames().intern(init.defaultValue)),
      specified(init.specified),
      ownerElement(init.ownerElement) {
    value = init.value;
}

AttrImpl::AttrImpl(const PooledInit& init, const LentText& text, Document* document) noexcept
    : Attr(document),
      name(init.name),
      attributeType(init.attributeType),
      defaultValue(init.defaultValue),
      value(text.string()),
      specified(init.specified),
      ownerElement(init.ownerElement) {}

void AttrImpl::setPrefix(const Xstring& prefix) {
    name.setPrefix(prefix, as_impl(getOwnerDocument()));
}

// A first child that isn't text, such as an entity reference, stays as it is.
void AttrImpl::setValue(const Xstring& newValue) {
    const DocumentGuard guard(this);
    Node* child = Tree::firstChildOf(this);
    if (child == nullptr) {
        append_owned(this, OwnedNode<Node>(new TextImpl(newValue.data(), getOwnerDocument())));
    } else if (is_character_data(child)) {
        static_cast<CharacterData*>(child)->setData(newValue);
    }
    value = newValue;
    specified = true;
}

}  // namespace qvox

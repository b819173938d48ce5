#include "dom/attr.h"

#include "dom/character_data.h"
#include "dom/document.h"
#include "dom/named_node_map.h"
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
      name(as_impl(document).getNames().nodeName(init.namespaceURI, init.qualifiedName,
                                                 init.attributeType, init.defaultValue)) {
    value = init.value;
    NodeLinks::setSpecified(this, init.specified);
}

AttrImpl::AttrImpl(const NodeName* attributeName, const LentText& text, bool specified,
                   const NodeHome& home) noexcept
    : Attr(home), name(attributeName), value(text.string()) {
    NodeLinks::setSpecified(this, specified);
}

void AttrImpl::setPrefix(const Xstring& prefix) {
    change_name(this);
    name = as_impl(getOwnerDocument()).getNames().withPrefix(*name, prefix);
}

void AttrImpl::setNodeValue(const Xstring& nodeValue) {
    Tree::touch(this);
    value = nodeValue;
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
    setNodeValue(newValue);
    NodeLinks::setSpecified(this, true);
}

}  // namespace qvox

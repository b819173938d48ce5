/// \file
/// Nodes of qvox/easy.h: handles to the nodes of a tree.
#ifndef QVOX_EASY_NODE_H
#define QVOX_EASY_NODE_H

#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include <qvox/dom.h>
#include <qvox/easy/text.h>
#include <qvox/parser.h>

namespace qvox::easy {

class node_range;

/// A handle to a node of a document, as cheap as a pointer, and valid as long as the node: until it
/// is removed or its document goes. It may be null, as the result of a search is that found
/// nothing: whatever is asked of such a handle but that raises error.
///
/// Texts come out as UTF-8. The functions whose name ends in 16 give the tree's own UTF-16, valid
/// until that text changes. Names are qualified, as they stand in the document.
class node {
public:
    node() = default;
    /// A handle to a node of the classic interface, which may be null.
    node(qvox::Node* classic) noexcept : target(classic) {}

    /// The node for the classic interface, or null.
    qvox::Node* get() const noexcept { return target; }
    /// Whether there is a node.
    explicit operator bool() const noexcept { return target != nullptr; }
    /// Whether both are the same node, or both null.
    bool operator==(const node& other) const noexcept { return target == other.target; }
    /// The opposite of ==.
    bool operator!=(const node& other) const noexcept { return target != other.target; }

    /// Whether it is an element.
    bool is_element() const { return is(qvox::Node::ELEMENT_NODE); }
    /// Whether it is an attribute.
    bool is_attribute() const { return is(qvox::Node::ATTRIBUTE_NODE); }
    /// Also for a CDATA section.
    bool is_text() const { return is(qvox::Node::TEXT_NODE) || is(qvox::Node::CDATA_SECTION_NODE); }
    /// Whether it is a comment.
    bool is_comment() const { return is(qvox::Node::COMMENT_NODE); }

    /// The qualified name; of a node without one "#text", "#comment" and the like.
    std::string name() const { return name16_().utf8(); }
    /// name() in UTF-16.
    std::u16string_view name16() const { return name16_(); }
    /// Empty for a node without a namespace.
    std::string local_name() const { return node_().getLocalName().utf8(); }
    /// Empty for a node without a namespace.
    std::string namespace_uri() const { return node_().getNamespaceURI().utf8(); }
    /// Of an attribute, a text, a comment or a processing instruction; else empty.
    std::string value() const { return node_().getNodeValue().utf8(); }
    /// value() in UTF-16.
    std::u16string_view value16() const { return node_().getNodeValue(); }
    /// All text at and below the node, that of CDATA sections too, in the order of the document; of
    /// an attribute its value.
    std::string text() const { return text_().utf8(); }
    /// text() in UTF-16; a text of its own.
    std::u16string text16() const { return std::u16string(text_().view()); }

    /// The node that this one is a child of; null where there is none, as for an attribute.
    node parent() const { return node_().getParentNode(); }
    /// The first child of any kind, or null.
    node first_child() const { return node_().getFirstChild(); }
    /// The last child of any kind, or null.
    node last_child() const { return node_().getLastChild(); }
    /// The child of the same parent behind this one, or null.
    node next() const { return node_().getNextSibling(); }
    /// The child of the same parent ahead of this one, or null.
    node previous() const { return node_().getPreviousSibling(); }

    /// The children, for range-for. The node in hand may be removed.
    inline node_range children() const;
    /// The children that are elements, in the same way.
    inline node_range elements() const;
    /// The children that are elements of that name.
    inline node_range elements(const easy::text& name) const;
    /// The first child element of that name, or null.
    inline node child(const easy::text& name) const;

    /// The elements below of that name, "*" for all, in the order of the document.
    std::vector<node> all(const easy::text& name) const {
        return detail::checked([&] {
            return nodes_of(is(qvox::Node::DOCUMENT_NODE)
                                ? document_().getElementsByTagName(name.get())
                                : element_().getElementsByTagName(name.get()));
        });
    }
    /// The same by namespace and local name.
    std::vector<node> all_ns(const easy::text& uri, const easy::text& localName) const {
        return detail::checked([&] {
            return nodes_of(is(qvox::Node::DOCUMENT_NODE)
                                ? document_().getElementsByTagNameNS(uri.get(), localName.get())
                                : element_().getElementsByTagNameNS(uri.get(), localName.get()));
        });
    }

    /// The attributes, whose name() and value() tell of them; none for what is no element.
    std::vector<node> attributes() const {
        std::vector<node> all;
        const NamedNodeMap* const map = node_().getAttributes();
        for (int i = 0; map != nullptr && i < map->getLength(); ++i) all.emplace_back(map->item(i));
        return all;
    }
    /// Whether there is an attribute of that name.
    bool has(const easy::text& attribute) const { return !attribute_(attribute).isNull(); }
    /// The value of an attribute, or `otherwise` where there is none.
    std::string get(const easy::text& attribute, const std::string& otherwise = {}) const {
        const Xstring& value = attribute_(attribute);
        return value.isNull() ? otherwise : value.utf8();
    }
    /// The value of an attribute in UTF-16; empty where there is none.
    std::u16string_view get16(const easy::text& attribute) const { return attribute_(attribute); }
    /// Sets an attribute of an element. Returns this node, to set more.
    const node& set(const easy::text& attribute, const easy::text& value) const {
        detail::checked([&] { element_().setAttribute(attribute.get(), value.get()); });
        return *this;
    }
    /// Takes an attribute away, if it is there. Returns this node.
    const node& remove_attribute(const easy::text& attribute) const {
        detail::checked([&] { element_().removeAttribute(attribute.get()); });
        return *this;
    }

    /// Adds an element behind the children and returns it.
    node add(const easy::text& name) const {
        return put([&](Document& document) { return document.createElement(name.get()); });
    }
    /// The same with `content` as its text.
    node add(const easy::text& name, const easy::text& content) const {
        const node added = add(name);
        if (content.get().length() != 0) added.add_text(content);
        return added;
    }
    /// The same in a namespace. Declaring the prefix is up to the caller.
    node add_ns(const easy::text& uri, const easy::text& name) const {
        return put(
            [&](Document& document) { return document.createElementNS(uri.get(), name.get()); });
    }
    /// Adds a text behind the children and returns it.
    node add_text(const easy::text& content) const {
        return put([&](Document& document) { return document.createTextNode(content.get()); });
    }
    /// Adds a comment behind the children and returns it.
    node add_comment(const easy::text& content) const {
        return put([&](Document& document) { return document.createComment(content.get()); });
    }

    /// Puts a text in the place of all children; of an attribute, text and the like, sets its
    /// value.
    void set_text(const easy::text& content) const {
        if (!is_element()) {
            detail::checked([&] {
                if (is_attribute()) {
                    static_cast<Attr&>(node_()).setValue(content.get());
                } else {
                    node_().setNodeValue(content.get());
                }
            });
            return;
        }
        while (const node first = first_child()) first.remove();
        if (content.get().length() != 0) add_text(content);
    }
    /// Takes a child out of its parent and frees it with all that is below; the handles to that are
    /// invalid then.
    void remove() const {
        detail::checked([&] {
            qvox::Node* const from = node_().getParentNode();
            if (from == nullptr) throw error(QVOXException::DOM_ERR, "not a child");
            DOMParser().freeNode(from->removeChild(target));
        });
    }

private:
    bool is(int type) const { return node_().getNodeType() == type; }

    qvox::Node& node_() const {
        if (target == nullptr) throw error(QVOXException::DOM_ERR, "no node");
        return *target;
    }
    const Xstring& name16_() const { return node_().getNodeName(); }
    Element& element_() const {
        if (!is_element()) throw error(QVOXException::DOM_ERR, "not an element");
        return static_cast<Element&>(node_());
    }
    Document& document_() const {
        return is(qvox::Node::DOCUMENT_NODE) ? static_cast<Document&>(node_())
                                             : *node_().getOwnerDocument();
    }
    const Xstring& attribute_(const easy::text& name) const {
        return is_element() ? element_().getAttribute(name.get()) : Xstring::Null;
    }

    Xstring text_() const {
        if (is_attribute()) return node_().getNodeValue();
        Xstring all("");
        for (const qvox::Node* at = target; at != nullptr;) {
            if (node(const_cast<qvox::Node*>(at)).is_text()) all += at->getNodeValue();
            const qvox::Node* down = at->getFirstChild();
            while (down == nullptr && at != target) {
                down = at->getNextSibling();
                if (down == nullptr) at = at->getParentNode();
            }
            at = down;
        }
        return all;
    }

    static std::vector<node> nodes_of(NodeList* list) {
        std::vector<node> all;
        all.reserve(static_cast<std::size_t>(list->getLength()));
        for (int i = 0; i < list->getLength(); ++i) all.emplace_back(list->item(i));
        return all;
    }

    // Appends what `make` makes.
    template <typename Make>
    node put(const Make& make) const {
        return detail::checked([&] {
            qvox::Node* const added = make(document_());
            try {
                return node(node_().appendChild(added));
            } catch (...) {
                DOMParser().freeNode(added);
                throw;
            }
        });
    }

    qvox::Node* target = nullptr;
};

/// Children of a node, one after the other.
class node_range {
public:
    /// Over the nodes of a range, each once; of the range that made it, while that is there.
    class iterator {
    public:
        /// One pass.
        using iterator_category = std::input_iterator_tag;
        /// What it goes over.
        using value_type = node;
        /// Of no use in one pass.
        using difference_type = std::ptrdiff_t;
        /// What -> gives.
        using pointer = const node*;
        /// What * gives; lives until the next step.
        using reference = const node&;

        /// The end.
        iterator() = default;
        /// At `first`, or at the next one that the range shows.
        iterator(node first, const node_range* children) : at(first), range(children) { settle(); }
        /// The node in hand, null at the end.
        const node& operator*() const { return at; }
        /// The node in hand.
        const node* operator->() const { return &at; }
        /// On to the next one, also where the node in hand has been removed.
        iterator& operator++() {
            at = following;
            settle();
            return *this;
        }
        /// Whether both are at the same node, or at the end.
        bool operator==(const iterator& other) const { return at == other.at; }
        /// The opposite of ==.
        bool operator!=(const iterator& other) const { return at != other.at; }

    private:
        // The one behind is found before this one may be removed.
        void settle() {
            while (at && !range->shows(at)) at = at.next();
            following = at ? at.next() : node();
        }

        node at;
        node following;
        const node_range* range = nullptr;
    };

    /// The children of `parent`, or those that are elements, or those of that name.
    node_range(node parent, bool elementsOnly, const Xstring& elementName = Xstring::Null)
        : first(parent.first_child()), elements(elementsOnly), name(elementName) {}

    /// At the first one.
    iterator begin() const { return {first, this}; }
    /// Behind the last one.
    iterator end() const { return {}; }
    /// Whether there is none.
    bool empty() const { return begin() == end(); }

private:
    bool shows(const node& child) const {
        if (!elements) return true;
        return child.is_element() && (name.isNull() || name == child.name16());
    }

    node first;
    bool elements;
    Xstring name;
};

node_range node::children() const { return {*this, false}; }
node_range node::elements() const { return {*this, true}; }
node_range node::elements(const easy::text& name) const { return {*this, true, name.get()}; }

node node::child(const easy::text& name) const {
    const node_range found = elements(name);
    return *found.begin();
}

}  // namespace qvox::easy

#endif

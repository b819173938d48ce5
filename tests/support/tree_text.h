// Trees as short texts, to make them from and to compare them with:
//     a[x='1' {uri}p:y='2'*]('text' ='CDATA' !'comment' ?target'data' &reference #(...))
//     /(%doctype {uri}p:root)
// An element with its attributes in brackets (a star: not specified) and its children in
// parentheses; # is a fragment, / a document, % a document type, $ an entity, ~ a notation, and @
// an attribute by itself. A null text is a dash. The texts are ASCII.
#pragma once

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <qvox/qvox.h>

#include "support/recorder.h"

namespace qvox_test {

inline std::string plain(const qvox::Xstring& text) {
    return std::string(text.data(), text.data() + text.length());
}

inline std::string name_text(const qvox::Node& node) {
    const qvox::Xstring& uri = node.getNamespaceURI();
    return (uri.isNull() ? "" : '{' + plain(uri) + '}') + plain(node.getNodeName());
}

// Its name and the parts of that.
inline std::string names_of(const qvox::Node& node) {
    return quoted(node.getNodeName()) + ' ' + quoted(node.getNamespaceURI()) + ' ' +
           quoted(node.getPrefix()) + ' ' + quoted(node.getLocalName());
}

// What an entity or notation was declared with.
inline std::string identifiers_of(const qvox::Node& node) {
    if (const auto* const entity = dynamic_cast<const qvox::Entity*>(&node)) {
        return quoted(entity->getPublicId()) + ' ' + quoted(entity->getSystemId()) + ' ' +
               quoted(entity->getNotationName());
    }
    const auto& notation = dynamic_cast<const qvox::Notation&>(node);
    return quoted(notation.getPublicId()) + ' ' + quoted(notation.getSystemId());
}

inline std::string tree_text(const qvox::Node* node);

// The items of a list or map, with a blank between them.
template <typename Collection>
std::string items_text(const Collection& items) {
    std::string out;
    for (int i = 0; i < items.getLength(); ++i)
        out += (i == 0 ? "" : " ") + tree_text(items.item(i));
    return out;
}

inline std::string attributes_text(const qvox::NamedNodeMap& attributes) {
    std::string out;
    for (int i = 0; i < attributes.getLength(); ++i) {
        const std::string text = tree_text(attributes.item(i));
        out += (i == 0 ? "" : " ") + text.substr(text[0] == '@' ? 1 : 0);
    }
    return '[' + out + ']';
}

inline std::string tree_text(const qvox::Node* node) {
    if (node == nullptr) return "null";
    const std::string name = name_text(*node);
    const std::string value = quoted(node->getNodeValue());
    std::string out;
    switch (node->getNodeType()) {
        case qvox::Node::ELEMENT_NODE:
            out = name;
            if (node->hasAttributes()) out += attributes_text(*node->getAttributes());
            break;
        case qvox::Node::ATTRIBUTE_NODE:
            out = '@' + name + '=' + value;
            if (!static_cast<const qvox::Attr*>(node)->getSpecified()) out += '*';
            break;
        case qvox::Node::TEXT_NODE: out = value; break;
        case qvox::Node::CDATA_SECTION_NODE: out = '=' + value; break;
        case qvox::Node::ENTITY_REFERENCE_NODE: out = '&' + name; break;
        case qvox::Node::ENTITY_NODE: out = '$' + name; break;
        case qvox::Node::PROCESSING_INSTRUCTION_NODE: out = '?' + name + value; break;
        case qvox::Node::COMMENT_NODE: out = '!' + value; break;
        case qvox::Node::DOCUMENT_NODE: out = '/'; break;
        case qvox::Node::DOCUMENT_TYPE_NODE: out = '%' + name; break;
        case qvox::Node::DOCUMENT_FRAGMENT_NODE: out = '#'; break;
        case qvox::Node::NOTATION_NODE: out = '~' + name; break;
        default: out = "(type " + std::to_string(node->getNodeType()) + ')';
    }
    return node->hasChildNodes() ? out + '(' + items_text(*node->getChildNodes()) + ')' : out;
}

// Makes nodes of a document from such a text; not entities, notations and stars.
class TreeMaker {
public:
    TreeMaker(qvox::Document& owner, const char* text) : document(owner), at(text) {}

    // The children that the text has up to its end or to a closing parenthesis.
    void make_children(qvox::Node& parent) {
        for (skip_blanks(); *at != '\0' && *at != ')'; skip_blanks()) {
            qvox::Node* const child = make();
            // A fragment can become a child only in the place of another.
            const bool fragment = child->getNodeType() == qvox::Node::DOCUMENT_FRAGMENT_NODE;
            if (!fragment) {
                parent.appendChild(child);
                continue;
            }
            qvox::Node* const place = parent.appendChild(document.createTextNode(""));
            qvox::DOMParser().freeNode(parent.replaceChild(child, place));
        }
    }

    qvox::Node* make() {
        skip_blanks();
        qvox::Node* const node = make_bare();
        if (*at == '(') {
            ++at;
            make_children(*node);
            ++at;
        }
        return node;
    }

private:
    void skip_blanks() {
        while (*at == ' ') ++at;
    }

    std::string until(const char* ends) {
        std::string out;
        while (*at != '\0' && std::string(ends).find(*at) == std::string::npos) out += *at++;
        return out;
    }

    // What stands between the mark in hand and the end; null where it is another mark.
    qvox::Xstring between(char mark, const char* end) {
        if (*at != mark) return {};
        ++at;
        const std::string text = until(end);
        ++at;
        return text.c_str();
    }

    qvox::Xstring data() { return *at == '-' ? (++at, qvox::Xstring()) : between('\'', "'"); }
    qvox::Xstring uri() { return between('{', "}"); }
    qvox::Xstring name() { return until(" ()[]='-").c_str(); }

    qvox::Node* make_bare() {
        switch (*at) {
            case '\'':
            case '-': return document.createTextNode(data());
            case '=': return ++at, document.createCDATASection(data());
            case '!': return ++at, document.createComment(data());
            case '&': return ++at, document.createEntityReference(name());
            case '#': return ++at, document.createDocumentFragment();
            case '%': return ++at, document.getImplementation()->createDocumentType(name(), {}, {});
            case '?': {
                ++at;
                const qvox::Xstring target = name();
                return document.createProcessingInstruction(target, data());
            }
            default: return make_element();
        }
    }

    qvox::Element* make_element() {
        const qvox::Xstring space = uri();
        qvox::Element* const element = space.isNull() ? document.createElement(name())
                                                      : document.createElementNS(space, name());
        if (*at != '[') return element;
        for (++at; *at != ']'; skip_blanks()) {
            const qvox::Xstring attributeSpace = uri();
            const qvox::Xstring attribute = name();
            ++at;
            if (attributeSpace.isNull()) {
                element->setAttribute(attribute, data());
            } else {
                element->setAttributeNS(attributeSpace, attribute, data());
            }
        }
        ++at;
        return element;
    }

    qvox::Document& document;
    const char* at;
};

// The document in an ASCII text.
inline qvox::Document* parse_document(qvox::DOMParser& parser, const std::string& text) {
    std::vector<unsigned short> units(text.begin(), text.end());
    units.push_back(0);
    return parser.parse(units.data());
}

// A document for a test, with the children that the text has: Tree("%d a(b)"). A text that begins
// with "<" is parsed.
class Tree {
public:
    explicit Tree(const std::string& text = "")
        : document(text[0] == '<' ? parse_document(parser, text) : parser.createDocument()) {
        if (text[0] != '<') TreeMaker(*document, text.c_str()).make_children(*document);
        dropped.reserve(8);  // where memory is made to fail, a test's few nodes aren't lost
    }
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;
    ~Tree() {
        free_dropped();
        parser.free(document);
    }

    // A document type takes every node from wherever it stands, but empties fragments, and doesn't
    // own documents.
    void free_dropped() {
        qvox::Node* const heap = parser.getImplementation()->createDocumentType({}, {}, {});
        std::set<qvox::Node*> fragments;
        std::set<qvox::Document*> documents;
        for (qvox::Node* const node : dropped) {
            auto* const droppedDocument = dynamic_cast<qvox::Document*>(node);
            if (droppedDocument != nullptr) documents.insert(droppedDocument);
            if (node == nullptr || droppedDocument != nullptr || node->getParentNode() != nullptr) {
                continue;
            }
            heap->appendChild(node);
            if (node->getParentNode() == nullptr) fragments.insert(node);
        }
        parser.freeNode(heap);
        for (qvox::Node* const fragment : fragments) parser.freeNode(fragment);
        for (qvox::Document* const freed : documents) parser.free(freed);
        dropped.clear();
    }

    // Frees the node at the end, unless it has a parent then; a document in any case.
    template <typename NodeType>
    NodeType* drop(NodeType* node) {
        dropped.push_back(node);
        return node;
    }

    // Is not to be freed at the end: the caller does that.
    qvox::Node* keep(qvox::Node* node) {
        dropped.erase(std::remove(dropped.begin(), dropped.end(), node), dropped.end());
        return node;
    }

    // A new node of this document, without parent.
    qvox::Node* make(const char* text) { return TreeMaker(*document, text).make(); }

    // The first node in document order with that name, or, for a node that has a value, with that
    // value.
    qvox::Node* operator[](const char* nameOrValue) { return find(document, nameOrValue); }

    qvox::Element* element(const char* name) {
        return dynamic_cast<qvox::Element*>(find(document, name));
    }

    // A new node of that type of this document, without parent. An element has the attribute x.
    qvox::Node* make_type(int type) {
        const char* const texts[] = {"a[x='1']", "",     "'t'", "='c'", "&r", "",
                                     "?p'd'",    "!'c'", "",    "%d",   "#",  ""};
        if (type == qvox::Node::DOCUMENT_NODE) return parser.createDocument();
        if (type == qvox::Node::ATTRIBUTE_NODE) return document->createAttribute("x");
        const bool entity = type == qvox::Node::ENTITY_NODE;
        if (!entity && type != qvox::Node::NOTATION_NODE) return make(texts[type - 1]);
        Tree source(
            "<!DOCTYPE a [<!NOTATION n PUBLIC 'p' 's'><!ENTITY e PUBLIC 'p' 's' NDATA n>]><a/>");
        const qvox::DocumentType* const doctype = source.document->getDoctype();
        qvox::NamedNodeMap* const map = entity ? doctype->getEntities() : doctype->getNotations();
        return document->importNode(map->item(0), true);
    }

    std::string text() const { return tree_text(document); }

    qvox::DOMParser parser;
    qvox::Document* const document;

private:
    std::vector<qvox::Node*> dropped;

    static qvox::Node* find(qvox::Node* node, const char* wanted) {
        const qvox::Xstring& value = node->getNodeValue();
        const bool named = value.isNull() && node->getNodeType() != qvox::Node::TEXT_NODE;
        if (named ? node->getNodeName() == wanted : value == wanted) return node;
        for (node = node->getFirstChild(); node != nullptr; node = node->getNextSibling()) {
            if (qvox::Node* const found = find(node, wanted)) return found;
        }
        return nullptr;
    }
};

// What a call raises: "DOM 8 message", "RANGE 1 message" or "QVOX 4 message"; "" for nothing.
template <typename Action>
std::string raised_by(Action action) {
    try {
        action();
    } catch (const qvox::DOMException& e) {
        EXPECT_EQ(static_cast<const qvox::QVOXException&>(e).getCode(),
                  qvox::QVOXException::DOM_ERR);
        return "DOM " + std::to_string(e.getCode()) + ' ' + plain(e.getMessage());
    } catch (const qvox::RangeException& e) {
        EXPECT_EQ(static_cast<const qvox::QVOXException&>(e).getCode(),
                  qvox::QVOXException::RANGE_ERR);
        return "RANGE " + std::to_string(e.getCode()) + ' ' + plain(e.getMessage());
    } catch (const qvox::QVOXException& e) {
        return "QVOX " + std::to_string(e.getCode()) + ' ' + plain(e.getMessage());
    }
    return {};
}

}  // namespace qvox_test

// Programs of DOM, Traversal and Range calls over three documents, with nodes moved across them and
// fragments inside fragments. Input: calls, each a byte and its arguments.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <qvox/qvox.h>

#include "support/input.h"
#include "support/require.h"
#include "support/trees.h"

namespace qvox_fuzz {
namespace {

using qvox::Node;
using qvox::Xstring;

constexpr const char* TEXTS[] = {"a", "b", "p:a", "p:b", "i", "xml", "text", "two words", "", "*"};
constexpr const char* DOCUMENTS[] = {
    "<!DOCTYPE a [<!ATTLIST a b CDATA 'v' i ID #IMPLIED><!ENTITY e 'x'><!NOTATION n SYSTEM 's'>"
    "<!--c--><?t d?>]><a i='1' b='w' xmlns:p='u' p:c='v'>text<b>more<p:a/></b><!--c--><?t d?>"
    "<![CDATA[data]]>tail</a>",
    "<a><b c='d'/><b>text</b>tail</a>",
    "<html/>",
};
constexpr std::size_t MOST_NODES = 250;
constexpr std::size_t MOST_CALLS = 200;
constexpr std::size_t MOST_BYTES = 256;  // that a byte tells apart

// For a find: the calls and their nodes are written to standard error.
const bool isTracing = std::getenv("QVOX_FUZZ_TRACE") != nullptr;

struct EveryOther final : qvox::NodeFilter {
    int calls = 0;
    int acceptNode(Node* /*node*/) override {
        return ++calls % 2 == 0 ? FILTER_ACCEPT : FILTER_SKIP;
    }
};

// What a program has in hand. It never uses what has been freed: before nodes are freed, all that
// points to them goes.
class Machine {
public:
    explicit Machine(Input program) : input(program) {
        for (const char* const text : DOCUMENTS) {
            std::vector<unsigned short> units(text, text + std::char_traits<char>::length(text));
            units.push_back(0);
            qvox::Document* const document = parser.parse(units.data());
            documents.push_back(document);
            for_each_node(document, [this](Node* node) { keep(node); });
        }
    }
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    ~Machine() {
        freeViews();
        for (Node* const root : roots()) parser.freeNode(root);
        for (; !documents.empty(); documents.pop_back()) parser.free(documents.back());
    }

    void run() {
        for (std::size_t calls = 0; !input.isEmpty() && calls < MOST_CALLS; ++calls) {
            try {
                call();
            } catch (const qvox::QVOXException&) {
                // the call is refused
            }
        }
        check();
    }

private:
    struct Call {
        const char* name;
        void (Machine::*make)();
    };
    static const Call CALLS[];

    void call();
    void freeNode();

    // Everything can be read, whatever the calls were.
    void check() {
        for (Node* const root : roots()) check_tree(root);
        for (qvox::Document* const document : documents) {
            check_tree(document);
            int size = 0;
            parser.write(document, static_cast<unsigned short*>(nullptr), &size);
        }
    }

    // The nodes in hand from which others hang, or nothing, and which hang from none.
    std::vector<Node*> roots() {
        std::set<Node*> hanging;
        const auto mark_below = [&hanging](Node* root) {
            for_each_node(root, [&](Node* node) {
                if (node != root) hanging.insert(node);
            });
        };
        for (Node* const document : documents) mark_below(document);
        for (Node* const node : nodes) {
            if (hanging.count(node) == 0) mark_below(node);
        }
        std::vector<Node*> found;
        for (Node* const node : nodes) {
            if (hanging.count(node) == 0 && node->getNodeType() != Node::DOCUMENT_NODE) {
                found.push_back(node);
            }
        }
        return found;
    }

    void freeViews() {
        qvox::Document* const any = documents[0];
        for (qvox::Range* const range : ranges) any->freeRange(range);
        for (qvox::NodeIterator* const iterator : iterators) any->freeNodeIterator(iterator);
        for (qvox::TreeWalker* const walker : walkers) any->freeTreeWalker(walker);
        ranges.clear();
        iterators.clear();
        walkers.clear();
    }

    void keep(Node* node) {
        if (node == nullptr || std::find(nodes.begin(), nodes.end(), node) != nodes.end()) return;
        if (node->getNodeType() != Node::DOCUMENT_NODE) nodes.push_back(node);
    }

    // Arguments of a call.
    Node* node() {
        const std::size_t index =
            input.below(std::min(nodes.size() + documents.size(), MOST_BYTES));
        Node* const taken =
            index < documents.size() ? documents[index] : nodes[index - documents.size()];
        if (isTracing) {
            std::fprintf(stderr, " %p type %d", static_cast<void*>(taken), taken->getNodeType());
        }
        return taken;
    }
    Node* nodeOrNull() { return input.below(16) == 0 ? nullptr : node(); }
    // To be put somewhere: no document, which would have two owners.
    Node* content() {
        Node* const taken = nodeOrNull();
        const bool isDocument = taken != nullptr && taken->getNodeType() == Node::DOCUMENT_NODE;
        return isDocument ? nullptr : taken;
    }
    qvox::Document* document() { return documents[input.below(documents.size())]; }
    template <typename Type>
    Type* nodeOf() {
        for (std::size_t tries = 0; tries < 8; ++tries) {
            if (auto* const found = dynamic_cast<Type*>(node())) return found;
        }
        throw qvox::QVOXException(qvox::QVOXException::DOM_ERR, "no such node");
    }
    template <typename View>
    View* view(const std::vector<View*>& views) {
        if (views.empty()) throw qvox::QVOXException(qvox::QVOXException::DOM_ERR, "no such view");
        return views[input.below(views.size())];
    }
    Xstring text() {
        const std::size_t index = input.below(std::size(TEXTS) + 1);
        return index < std::size(TEXTS) ? Xstring(TEXTS[index]) : Xstring();
    }
    int number() { return static_cast<int>(input.byte() % 12) - 2; }
    bool yes() { return input.byte() % 2 != 0; }
    qvox::NamedNodeMap* map() {
        Node* const of = node();
        if (auto* const type = dynamic_cast<qvox::DocumentType*>(of)) {
            if (qvox::NamedNodeMap* const entities = type->getEntities()) return entities;
        }
        if (qvox::NamedNodeMap* const attributes = of->getAttributes()) return attributes;
        throw qvox::QVOXException(qvox::QVOXException::DOM_ERR, "no such map");
    }

    qvox::DOMParser parser;
    Input input;
    std::vector<qvox::Document*> documents;
    std::vector<Node*> nodes;
    std::vector<qvox::Range*> ranges;
    std::vector<qvox::NodeIterator*> iterators;
    std::vector<qvox::TreeWalker*> walkers;
    EveryOther filter;

    void create() {
        qvox::Document* const by = document();
        const Xstring name = text();
        switch (input.below(10)) {
            case 0: return keep(by->createElement(name));
            case 1: return keep(by->createElementNS("u", name));
            case 2: return keep(by->createAttribute(name));
            case 3: return keep(by->createAttributeNS("u", name));
            case 4: return keep(by->createTextNode(name));
            case 5: return keep(by->createCDATASection(name));
            case 6: return keep(by->createComment(name));
            case 7: return keep(by->createProcessingInstruction(name, name));
            case 8: return keep(by->createEntityReference(name));
            default: return keep(parser.getImplementation()->createDocumentType(name, name, name));
        }
    }
    void createFragment() { keep(document()->createDocumentFragment()); }
    void appendChild() {
        Node* const parent = node();
        parent->appendChild(content());
    }
    void insertBefore() {
        Node* const parent = node();
        Node* const child = content();
        Node* const ref = yes() ? parent->getFirstChild() : nodeOrNull();
        parent->insertBefore(child, ref);
    }
    void replaceChild() {
        Node* const parent = node();
        Node* const child = content();
        keep(parent->replaceChild(child, yes() ? parent->getLastChild() : nodeOrNull()));
    }
    void removeChild() {
        Node* const child = node();
        Node* const parent = child->getParentNode();
        if (parent != nullptr) parent->removeChild(child);
    }
    void cloneNode() {
        Node* const source = node();
        if (source->getNodeType() == Node::DOCUMENT_NODE) return;  // a document is for one owner
        if (nodes.size() < MOST_NODES) keep(source->cloneNode(yes()));
    }
    void importNode() {
        qvox::Document* const by = document();
        if (nodes.size() < MOST_NODES) keep(by->importNode(nodeOrNull(), yes()));
    }
    void normalize() { node()->normalize(); }
    void navigate() {
        Node* const from = node();
        const qvox::NodeList& children = *from->getChildNodes();
        keep(children.item(number()));
        keep(from->getNextSibling());
        keep(from->getPreviousSibling());
        keep(from->getLastChild());
    }
    void setNodeValue() {
        Node* const target = node();
        target->setNodeValue(text());
    }
    void setPrefix() {
        Node* const target = node();
        target->setPrefix(text());
    }
    void setAttribute() {
        auto* const element = nodeOf<qvox::Element>();
        const Xstring name = text();
        yes() ? element->setAttribute(name, text()) : element->setAttributeNS("u", name, text());
        keep(element->getAttributeNode(name));
    }
    void removeAttribute() {
        auto* const element = nodeOf<qvox::Element>();
        yes() ? element->removeAttribute(text()) : element->removeAttributeNS("u", text());
    }
    void setAttributeNode() {
        auto* const element = nodeOf<qvox::Element>();
        auto* const attribute = nodeOf<qvox::Attr>();
        keep(yes() ? element->setAttributeNode(attribute) : element->setAttributeNodeNS(attribute));
    }
    void removeAttributeNode() {
        auto* const element = nodeOf<qvox::Element>();
        keep(element->removeAttributeNode(nodeOf<qvox::Attr>()));
    }
    void setNamedItem() {
        qvox::NamedNodeMap* const into = map();
        Node* const item = content();
        keep(yes() ? into->setNamedItem(item) : into->setNamedItemNS(item));
    }
    void removeNamedItem() {
        qvox::NamedNodeMap* const from = map();
        keep(yes() ? from->removeNamedItem(text()) : from->removeNamedItemNS("u", text()));
    }
    void editText() {
        auto* const data = nodeOf<qvox::CharacterData>();
        const int offset = number();
        switch (input.below(4)) {
            case 0: return data->insertData(offset, text());
            case 1: return data->deleteData(offset, number());
            case 2: return data->replaceData(offset, number(), text());
            default: return data->appendData(data->substringData(offset, number()));
        }
    }
    void splitText() {
        auto* const split = nodeOf<qvox::Text>();
        if (nodes.size() < MOST_NODES) keep(split->splitText(number()));
    }
    void search() {
        auto* const element = dynamic_cast<qvox::Element*>(node());
        qvox::Document* const in = document();
        qvox::NodeList* const list = element != nullptr ? element->getElementsByTagName(text())
                                                        : in->getElementsByTagNameNS("u", text());
        keep(list->item(number()));
        if (yes()) parser.free(list);
        keep(in->getElementById(text()));
    }
    void makeView() {
        Node* const root = nodeOrNull();
        qvox::Document* const by = document();
        qvox::NodeFilter* const shows = yes() ? &filter : nullptr;
        const unsigned long what = yes() ? 0xFFFFFFFFUL : input.byte();
        switch (input.below(3)) {
            case 0: return iterators.push_back(by->createNodeIterator(root, what, shows, true));
            case 1: return walkers.push_back(by->createTreeWalker(root, what, shows, true));
            default: return ranges.push_back(by->createRange());
        }
    }
    void walk() {
        qvox::TreeWalker& walker = *view(walkers);
        switch (input.below(8)) {
            case 0: return keep(walker.firstChild());
            case 1: return keep(walker.lastChild());
            case 2: return keep(walker.nextSibling());
            case 3: return keep(walker.previousSibling());
            case 4: return keep(walker.nextNode());
            case 5: return keep(walker.previousNode());
            case 6: return keep(walker.parentNode());
            default: return walker.setCurrentNode(nodeOrNull());
        }
    }
    void iterate() {
        qvox::NodeIterator& iterator = *view(iterators);
        if (input.below(16) == 0) iterator.detach();
        keep(yes() ? iterator.nextNode() : iterator.previousNode());
    }
    void setRange() {
        qvox::Range& range = *view(ranges);
        Node* const at = nodeOrNull();
        switch (input.below(9)) {
            case 0: return range.setStart(at, number());
            case 1: return range.setEnd(at, number());
            case 2: return range.setStartBefore(at);
            case 3: return range.setStartAfter(at);
            case 4: return range.setEndBefore(at);
            case 5: return range.setEndAfter(at);
            case 6: return range.selectNode(at);
            case 7: return range.selectNodeContents(at);
            default: return range.collapse(yes());
        }
    }
    void useRange() {
        qvox::Range& range = *view(ranges);
        if (nodes.size() > MOST_NODES) return;
        switch (input.below(9)) {
            case 0: return keep(range.cloneContents());
            case 1: return range.deleteContents();
            case 2: return keep(range.extractContents());
            case 3: return range.insertNode(nodeOrNull());
            case 4: return range.surroundContents(nodeOrNull());
            case 5: range.compareBoundaryPoints(number(), view(ranges)); return;
            case 6: keep(range.getCommonAncestorContainer()); return;
            case 7: ranges.push_back(range.cloneRange()); return;
            default: range.toString();
        }
    }
    void detachRange() { view(ranges)->detach(); }
};

#define QVOX_CALL(name) \
    { #name, &Machine::name }
const Machine::Call Machine::CALLS[] = {
    // clang-format off
    QVOX_CALL(create),
    QVOX_CALL(createFragment),
    QVOX_CALL(appendChild),
    QVOX_CALL(insertBefore),
    QVOX_CALL(replaceChild),
    QVOX_CALL(removeChild),
    QVOX_CALL(cloneNode),
    QVOX_CALL(importNode),
    QVOX_CALL(normalize),
    QVOX_CALL(navigate),
    QVOX_CALL(setNodeValue),
    QVOX_CALL(setPrefix),
    QVOX_CALL(setAttribute),
    QVOX_CALL(removeAttribute),
    QVOX_CALL(setAttributeNode),
    QVOX_CALL(removeAttributeNode),
    QVOX_CALL(setNamedItem),
    QVOX_CALL(removeNamedItem),
    QVOX_CALL(editText),
    QVOX_CALL(splitText),
    QVOX_CALL(search),
    QVOX_CALL(makeView),
    QVOX_CALL(walk),
    QVOX_CALL(iterate),
    QVOX_CALL(setRange),
    QVOX_CALL(setRange),
    QVOX_CALL(useRange),
    QVOX_CALL(useRange),
    QVOX_CALL(detachRange),
    QVOX_CALL(freeNode),
    // clang-format on
};

void Machine::call() {
    const Call& next = CALLS[input.below(std::size(CALLS))];
    if (isTracing) std::fprintf(stderr, "\n%s", next.name);
    (this->*next.make)();
}

void Machine::freeNode() {
    const std::vector<Node*> free = roots();
    if (free.empty()) return;
    Node* const root = free[input.below(free.size())];
    freeViews();
    for_each_node(root, [this](Node* node) {
        nodes.erase(std::remove(nodes.begin(), nodes.end(), node), nodes.end());
    });
    parser.freeNode(root);
}

}  // namespace

void run(Input input) { Machine(input).run(); }

}  // namespace qvox_fuzz

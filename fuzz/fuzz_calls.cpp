// Programs of DOM, Traversal and Range calls over three documents, with nodes moved across them and
// fragments inside fragments. Input: calls, each a byte and its arguments.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include <qvox/qvox.h>

#include "support/calls.h"
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
constexpr std::size_t MOST_CALLS = 400;
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
        std::string name;
        std::function<void(Machine&)> make;
    };

    void call() {
        static const std::vector<Call> calls = all_calls();
        const Call& next = calls[input.below(calls.size())];
        if (isTracing) std::fprintf(stderr, "\n%s", next.name.c_str());
        next.make(*this);
    }

    static std::vector<Call> all_calls() {
        std::vector<Call> all;
        const auto add = [&all](const std::string& name, auto method) {
            all.push_back({name, call_of(method)});
        };
        qvox_test::for_each_call(add);
        using qvox::NodeIterator;
        using qvox::TreeWalker;
        for (Node* (TreeWalker::*const step)() :
             {&TreeWalker::firstChild, &TreeWalker::lastChild, &TreeWalker::nextSibling,
              &TreeWalker::previousSibling, &TreeWalker::nextNode, &TreeWalker::previousNode,
              &TreeWalker::parentNode}) {
            add("step", step);
        }
        add("setCurrentNode", &TreeWalker::setCurrentNode);
        add("iterator's nextNode", &NodeIterator::nextNode);
        add("iterator's previousNode", &NodeIterator::previousNode);
        add("iterator's detach", &NodeIterator::detach);
        for (int i = 0; i < 4; ++i) {
            all.push_back({"makeView", [](Machine& machine) { machine.makeView(); }});
            all.push_back({"freeNode", [](Machine& machine) { machine.freeNode(); }});
        }
        return all;
    }

    template <typename Class, typename Result, typename... Types>
    static std::function<void(Machine&)> call_of(Result (Class::*method)(Types...)) {
        return call<Class, Result, std::decay_t<Types>...>(method);
    }
    template <typename Class, typename Result, typename... Types>
    static std::function<void(Machine&)> call_of(Result (Class::*method)(Types...) const) {
        return call<Class, Result, std::decay_t<Types>...>(method);
    }

    // A call with a target and arguments of its types, taken from the input.
    template <typename Class, typename Result, typename... Types, typename Method>
    static std::function<void(Machine&)> call(Method method) {
        return [method](Machine& machine) {
            if (std::is_pointer_v<Result> && machine.nodes.size() > MOST_NODES) return;
            Class& target = machine.target(static_cast<Class*>(nullptr));
            const std::tuple<Types...> arguments{
                machine.argument(&target, static_cast<Types*>(nullptr))...};
            const auto made = [&](const auto&... values) { return (target.*method)(values...); };
            if constexpr (std::is_pointer_v<Result>) {
                machine.keep(std::apply(made, arguments));
            } else {
                std::apply(made, arguments);
            }
        };
    }

    // Everything can be read, whatever the calls were.
    void check() {
        for (Node* const root : roots()) check_tree(root);
        for (qvox::Document* const document : documents) {
            check_tree(document);
            int size = 0;
            parser.write(document, static_cast<unsigned short*>(nullptr), &size);
        }
    }

    // The nodes in hand that hang from none.
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
        std::copy_if(nodes.begin(), nodes.end(), std::back_inserter(found),
                     [&hanging](Node* node) { return hanging.count(node) == 0; });
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
        if (node->getNodeType() != Node::DOCUMENT_NODE) return nodes.push_back(node);
        auto* const copy = static_cast<qvox::Document*>(node);
        const bool isKnown = std::count(documents.begin(), documents.end(), copy) != 0;
        if (!isKnown) parser.free(copy);
    }
    void keep(qvox::Range* range) { ranges.push_back(range); }
    void keep(qvox::NodeList* list) {
        keep(list->item(number()));
        if (yes()) parser.free(list);
    }

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
    template <typename View>
    View& view(const std::vector<View*>& views) {
        if (views.empty()) throw qvox::QVOXException(qvox::QVOXException::DOM_ERR, "no such view");
        return *views[input.below(views.size())];
    }
    int number() { return static_cast<int>(input.byte() % 12) - 2; }
    bool yes() { return input.byte() % 2 != 0; }

    template <typename Class>
    Class& target(Class* /*type*/) {
        for (std::size_t tries = 0; tries < 8; ++tries) {
            if (auto* const found = dynamic_cast<Class*>(node())) return *found;
        }
        throw qvox::QVOXException(qvox::QVOXException::DOM_ERR, "no such node");
    }
    qvox::Document& target(qvox::Document* /*type*/) {
        return *documents[input.below(documents.size())];
    }
    qvox::DOMImplementation& target(qvox::DOMImplementation* /*type*/) {
        return *parser.getImplementation();
    }
    qvox::Range& target(qvox::Range* /*type*/) { return view(ranges); }
    qvox::NodeIterator& target(qvox::NodeIterator* /*type*/) { return view(iterators); }
    qvox::TreeWalker& target(qvox::TreeWalker* /*type*/) { return view(walkers); }
    qvox::NamedNodeMap& target(qvox::NamedNodeMap* /*type*/) {
        Node* const of = node();
        if (auto* const type = dynamic_cast<qvox::DocumentType*>(of)) {
            if (qvox::NamedNodeMap* const entities = type->getEntities()) return *entities;
        }
        if (qvox::NamedNodeMap* const attributes = of->getAttributes()) return *attributes;
        throw qvox::QVOXException(qvox::QVOXException::DOM_ERR, "no such map");
    }

    Xstring argument(const void* /*target*/, Xstring* /*type*/) {
        const std::size_t index = input.below(std::size(TEXTS) + 1);
        return index < std::size(TEXTS) ? Xstring(TEXTS[index]) : Xstring();
    }
    int argument(const void* /*target*/, int* /*type*/) { return number(); }
    bool argument(const void* /*target*/, bool* /*type*/) { return yes(); }
    qvox::Range* argument(const void* /*target*/, qvox::Range** /*type*/) { return &view(ranges); }
    qvox::Attr* argument(const void* /*target*/, qvox::Attr** /*type*/) {
        return &target(static_cast<qvox::Attr*>(nullptr));
    }
    qvox::DocumentType* argument(const void* /*target*/, qvox::DocumentType** /*type*/) {
        return nullptr;  // a new document has to be free to go
    }
    Node* argument(const void* /*target*/, Node** /*type*/) { return nodeOrNull(); }
    // Into a tree goes no document, which would have two owners. What is looked for is often there,
    // and then in hand: a refused replaceChild takes its new child out of the tree.
    Node* argument(const Node* parent, Node** /*type*/) {
        if (parent->getNodeType() == Node::DOCUMENT_NODE || input.below(4) != 0) return content();
        Node* const child = yes() ? parent->getFirstChild() : parent->getLastChild();
        keep(child);
        return child;
    }
    Node* argument(const qvox::NamedNodeMap* /*map*/, Node** /*type*/) { return content(); }
    Node* content() {
        Node* const taken = nodeOrNull();
        const bool isDocument = taken != nullptr && taken->getNodeType() == Node::DOCUMENT_NODE;
        return isDocument ? nullptr : taken;
    }

    void makeView() {
        Node* const root = nodeOrNull();
        qvox::Document* const by = documents[0];
        qvox::NodeFilter* const shows = yes() ? &filter : nullptr;
        const unsigned long what = yes() ? 0xFFFFFFFFUL : input.byte();
        switch (input.below(3)) {
            case 0: return iterators.push_back(by->createNodeIterator(root, what, shows, true));
            case 1: return walkers.push_back(by->createTreeWalker(root, what, shows, true));
            default: return ranges.push_back(by->createRange());
        }
    }

    void freeNode() {
        const std::vector<Node*> free = roots();
        if (free.empty()) return;
        Node* const root = free[input.below(free.size())];
        freeViews();
        for_each_node(root, [this](Node* node) {
            nodes.erase(std::remove(nodes.begin(), nodes.end(), node), nodes.end());
        });
        parser.freeNode(root);
    }

    qvox::DOMParser parser;
    Input input;
    std::vector<qvox::Document*> documents;
    std::vector<Node*> nodes;
    std::vector<qvox::Range*> ranges;
    std::vector<qvox::NodeIterator*> iterators;
    std::vector<qvox::TreeWalker*> walkers;
    EveryOther filter;
};

}  // namespace

void run(Input input) { Machine(input).run(); }

}  // namespace qvox_fuzz

// Node iterators and tree walkers.
#include <algorithm>

#include <gtest/gtest.h>

#include "support/tree_text.h"

namespace qvox_test {
namespace {

using qvox::Node;
using qvox::NodeFilter;
using qvox::TreeWalker;

const unsigned long all = NodeFilter::SHOW_ALL;

std::string short_name(const Node* node) {
    if (node == nullptr) return "null";
    return plain(node->getNodeValue().isNull() ? node->getNodeName() : node->getNodeValue());
}

// Gives a result for the names listed and 0 for all others, and notes who was asked about.
class Refuse : public NodeFilter {
public:
    explicit Refuse(const std::string& refused, int answer = FILTER_REJECT)
        : names(' ' + refused + ' '), result(answer) {}
    virtual ~Refuse() = default;
    int acceptNode(Node* node) override {
        asked += short_name(node) + ' ';
        return names.find(' ' + short_name(node) + ' ') == std::string::npos ? 0 : result;
    }

    std::string asked;

private:
    const std::string names;
    const int result;
};

// Steps as the letters say: n is nextNode, p previousNode.
std::string walk(qvox::NodeIterator* iterator, const std::string& steps) {
    std::string out;
    for (const char c : steps) {
        const Node* const node = c == 'n' ? iterator->nextNode() : iterator->previousNode();
        out += (out.empty() ? "" : " ") + short_name(node);
    }
    return out;
}

TEST(NodeIterator, Steps) {
    const struct {
        const char* root;
        unsigned long show;
        const char* refused;
        const char* forward;
        const char* backward;
    } cases[] = {
        {"r", all, "", "r a x b i c t null r", "r #document null r"},
        // Not bound to the root.
        {"a", all, "", "a x b i c t null a", "a r #document null a"},
        {"b", all, "", "b i c t null b", "b x a r #document null b"},
        {"#document", all, "", "#document r a x", "#document null #document"},
        {"r", NodeFilter::SHOW_ELEMENT, "", "r a x i null r", "r null r"},
        {"r", NodeFilter::SHOW_TEXT | NodeFilter::SHOW_COMMENT, "", "c t null c", "null null"},
        {"t", all, "i a", "t null t", "t c b x r #document null t"},
        {"r", all, "a b", "r x i c t null r", "r #document null r"},
        {"r", all, "r t", "a x b i c null a", "#document null #document"},
        {"r", 0, "", "null null", "null null"},
        {"r", NodeFilter::SHOW_DOCUMENT, "", "null null", "#document null #document"},
    };
    for (const auto& test : cases) {
        Tree tree("r(a(x) &b(i) !'c' 't')");
        Refuse filter(test.refused);
        for (NodeFilter* const used :
             {static_cast<NodeFilter*>(&filter), static_cast<NodeFilter*>(nullptr)}) {
            if (used == nullptr && *test.refused != '\0') continue;
            const auto iterator = [&] {
                return tree.document->createNodeIterator(tree[test.root], test.show, used, false);
            };
            const auto steps = [](char letter, const std::string& words) {
                const auto blanks = std::count(words.begin(), words.end(), ' ');
                return std::string(static_cast<std::size_t>(blanks) + 1, letter);
            };
            qvox::NodeIterator* const next = iterator();
            qvox::NodeIterator* const previous = iterator();
            EXPECT_EQ(walk(next, steps('n', test.forward)), test.forward);
            EXPECT_EQ(walk(previous, steps('p', test.backward)), test.backward);
            tree.document->freeNodeIterator(next);
            tree.document->freeNodeIterator(previous);
        }
        if (test.show == 0) {
            EXPECT_EQ(filter.asked, "");
        }
    }
}

TEST(NodeIterator, TurningAndDetaching) {
    Tree tree("r(a b)");
    Refuse standard("r a b", 1);
    qvox::NodeIterator* const iterator =
        tree.document->createNodeIterator(tree["r"], NodeFilter::SHOW_ELEMENT, nullptr, true);
    EXPECT_EQ(walk(iterator, "nnpnn"), "r a r a b");
    // It stands on the node that it returned last, wherever that has gone.
    tree["a"]->appendChild(tree["b"]);
    EXPECT_EQ(walk(iterator, "pnn"), "a b null");
    EXPECT_EQ(walk(iterator, "nn"), "r a");
    tree.drop(tree["r"]->removeChild(tree["a"]));
    EXPECT_EQ(walk(iterator, "nnn"), "b null r");
    EXPECT_TRUE(iterator->getExpandEntityReferences());
    EXPECT_EQ(iterator->getRoot(), tree["r"]);
    EXPECT_EQ(iterator->getFilter(), nullptr);
    for (int i = 0; i < 2; ++i) {
        iterator->detach();
        EXPECT_EQ(iterator->getRoot(), nullptr);
        EXPECT_EQ(iterator->getWhatToShow(), NodeFilter::SHOW_ELEMENT);
        const std::string detached = "DOM 11 NodeIterator already detached";
        EXPECT_EQ(raised_by([&] { iterator->nextNode(); }), detached);
        EXPECT_EQ(raised_by([&] { iterator->previousNode(); }), detached);
    }
    tree.document->freeNodeIterator(iterator);

    // The standard's value for acceptance refuses.
    qvox::NodeIterator* const refusing =
        tree.document->createNodeIterator(tree["r"], all, &standard, false);
    EXPECT_EQ(walk(refusing, "n"), "null");
    EXPECT_EQ(refusing->getFilter(), &standard);
    refusing->detach();
    EXPECT_EQ(refusing->getFilter(), nullptr);
    tree.document->freeNodeIterator(refusing);
    EXPECT_EQ(raised_by([&] { tree.document->createNodeIterator(nullptr, all, nullptr, false); }),
              "DOM 9 NodeIterator root is null");
    EXPECT_EQ(raised_by([&] { tree.document->createTreeWalker(nullptr, all, nullptr, false); }),
              "DOM 9 TreeWalker root is null");
    tree.document->freeNodeIterator(nullptr);
    tree.document->freeTreeWalker(nullptr);
}

Node* step(TreeWalker* walker, const std::string& name) {
    if (name == "firstChild") return walker->firstChild();
    if (name == "lastChild") return walker->lastChild();
    if (name == "nextSibling") return walker->nextSibling();
    if (name == "previousSibling") return walker->previousSibling();
    if (name == "parentNode") return walker->parentNode();
    if (name == "nextNode") return walker->nextNode();
    return walker->previousNode();
}

TEST(TreeWalker, Steps) {
    const unsigned long element = NodeFilter::SHOW_ELEMENT;
    const struct {
        const char* from;
        const char* step;
        unsigned long show;
        const char* refused;
        const char* result;
    } cases[] = {
        {"r", "firstChild", all, "", "c"},
        {"r", "firstChild", element, "", "a"},
        {"r", "firstChild", element, "a", "b"},
        {"r", "firstChild", all, "c a t e b", "null"},
        {"x", "firstChild", all, "", "null"},
        {"e", "firstChild", all, "", "i"},
        {"e", "firstChild", element, "i", "null"},
        {"e", "nextNode", element, "i", "j"},
        {"r", "lastChild", all, "", "b"},
        {"r", "lastChild", all, "b e", "t"},
        {"r", "lastChild", NodeFilter::SHOW_TEXT, "", "t"},
        {"a", "nextSibling", all, "", "t"},
        {"a", "nextSibling", element, "", "b"},
        {"a", "nextSibling", element, "b", "null"},
        {"b", "nextSibling", all, "", "null"},
        {"b", "previousSibling", all, "", "e"},
        {"b", "previousSibling", element, "", "a"},
        {"b", "previousSibling", all, "e t a c", "null"},
        {"x", "parentNode", all, "", "a"},
        {"x", "parentNode", all, "a", "r"},
        {"r", "parentNode", all, "", "#document"},
        {"r", "parentNode", element, "", "null"},
        {"#document", "parentNode", all, "", "null"},
        {"x", "nextNode", all, "", "t"},
        {"x", "nextNode", element, "", "i"},
        {"r", "nextNode", all, "c a", "x"},
        {"b", "nextNode", all, "", "null"},
        {"b", "previousNode", all, "", "j"},
        {"b", "previousNode", element, "j i", "x"},
        {"c", "previousNode", all, "r", "#document"},
        {"#document", "previousNode", all, "", "null"},
        {"r", "nextNode", 0, "", "null"},
        {"r", "previousNode", NodeFilter::SHOW_DOCUMENT, "#document", "null"},
    };
    for (const auto& test : cases) {
        Tree tree("r(!'c' a(x) 't' &e(i(j)) b)");
        Refuse filter(test.refused);
        TreeWalker* const walker =
            tree.document->createTreeWalker(tree["r"], test.show, &filter, false);
        EXPECT_EQ(walker->getCurrentNode(), tree["r"]);
        walker->setCurrentNode(tree[test.from]);
        const Node* const result = step(walker, test.step);
        EXPECT_EQ(short_name(result), test.result) << test.from << ' ' << test.step;
        EXPECT_EQ(walker->getCurrentNode(), result == nullptr ? tree[test.from] : result);
        tree.document->freeTreeWalker(walker);
    }
}

TEST(TreeWalker, CurrentNode) {
    Tree tree("r(a b)");
    Tree other("o(p)");
    Refuse filter("");
    TreeWalker* const walker = tree.document->createTreeWalker(tree["a"], 0x1, &filter, true);
    EXPECT_EQ(walker->getRoot(), tree["a"]);
    EXPECT_EQ(walker->getFilter(), &filter);
    EXPECT_EQ(walker->getWhatToShow(), 0x1u);
    EXPECT_TRUE(walker->getExpandEntityReferences());
    EXPECT_EQ(raised_by([&] { walker->setCurrentNode(nullptr); }),
              "DOM 9 NodeIterator root is null");
    EXPECT_EQ(walker->getCurrentNode(), tree["a"]);
    EXPECT_EQ(walker->nextNode(), tree["b"]);
    EXPECT_EQ(walker->nextNode(), nullptr);
    EXPECT_EQ(walker->getCurrentNode(), tree["b"]);
    walker->setCurrentNode(other["o"]);
    EXPECT_EQ(walker->firstChild(), other["p"]);
    EXPECT_EQ(walker->nextNode(), nullptr);
    // What isn't shown is not asked about.
    EXPECT_EQ(filter.asked, "b p ");
    walker->setCurrentNode(tree.document);
    tree.document->freeTreeWalker(walker);
}

}  // namespace
}  // namespace qvox_test

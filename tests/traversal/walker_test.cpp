// Node iterators and tree walkers.
#include <gtest/gtest.h>

#include "support/script.h"

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
        const char* refused;  // null for no filter
        const char* forward;
        const char* backward;
    } cases[] = {
        {"r", all, nullptr, "r a x b i c t null r", "r #document null r"},
        // Not bound to the root.
        {"a", all, "", "a x b i c t null a", "a r #document null a"},
        {"b", all, nullptr, "b i c t null b", "b x a r #document null b"},
        {"#document", all, "", "#document r a x", "#document null #document"},
        {"r", NodeFilter::SHOW_ELEMENT, "", "r a x i null r", "r null r"},
        {"r", NodeFilter::SHOW_TEXT | NodeFilter::SHOW_COMMENT, nullptr, "c t null c", "null null"},
        {"t", all, "i a", "t null t", "t c b x r #document null t"},
        {"r", 0, "", "null null", "null null"},
        {"r", NodeFilter::SHOW_DOCUMENT, "", "null null", "#document null #document"},
    };
    for (const auto& [root, show, refused, forward, backward] : cases) {
        Tree tree("r(a(x) &b(i) !'c' 't')");
        Refuse filter(refused == nullptr ? "" : refused);
        for (const auto& [letter, names] : {std::pair('n', forward), std::pair('p', backward)}) {
            qvox::NodeIterator* const iterator = tree.document->createNodeIterator(
                tree[root], show, refused == nullptr ? nullptr : &filter, false);
            EXPECT_EQ(walk(iterator, std::string(split(names, ' ').size(), letter)), names);
            tree.document->freeNodeIterator(iterator);
        }
        EXPECT_TRUE(show != 0 || filter.asked.empty());
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
    EXPECT_EQ(walk(iterator, "pnnnn"), "a b null r a");
    tree.drop(tree["r"]->removeChild(tree["a"]));
    EXPECT_EQ(walk(iterator, "nnn"), "b null r");
    EXPECT_TRUE(iterator->getExpandEntityReferences());
    EXPECT_EQ(iterator->getRoot(), tree["r"]);
    EXPECT_EQ(iterator->getFilter(), nullptr);
    for (int i = 0; i < 2; ++i) {
        iterator->detach();
        EXPECT_EQ(iterator->getRoot(), nullptr);
        EXPECT_EQ(iterator->getWhatToShow(), NodeFilter::SHOW_ELEMENT);
        for (const char* const step : {"n", "p"}) {
            EXPECT_EQ(raised_by([&] { walk(iterator, step); }),
                      "DOM 11 NodeIterator already detached");
        }
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

TEST(TreeWalker, Steps) {
    const unsigned long element = NodeFilter::SHOW_ELEMENT;
    const struct {
        unsigned long show;
        const char* refused;
        const char* from;
        Node* (TreeWalker::*step)();
        const char* result;
    } cases[] = {{all, "", "r", &TreeWalker::firstChild, "c"},
                 {element, "a", "r", &TreeWalker::firstChild, "b"},
                 {all, "c a t e b", "r", &TreeWalker::firstChild, "null"},
                 {element, "i", "e", &TreeWalker::firstChild, "null"},
                 {all, "b e", "r", &TreeWalker::lastChild, "t"},
                 {NodeFilter::SHOW_TEXT, "", "r", &TreeWalker::lastChild, "t"},
                 {all, "", "a", &TreeWalker::nextSibling, "t"},
                 {element, "", "a", &TreeWalker::nextSibling, "b"},
                 {all, "", "b", &TreeWalker::previousSibling, "e"},
                 {element, "", "b", &TreeWalker::previousSibling, "a"},
                 {all, "e t a c", "b", &TreeWalker::previousSibling, "null"},
                 {all, "", "x", &TreeWalker::parentNode, "a"},
                 {all, "a", "x", &TreeWalker::parentNode, "r"},
                 {all, "", "r", &TreeWalker::parentNode, "#document"},
                 {all, "", "#document", &TreeWalker::parentNode, "null"},
                 {element, "", "r", &TreeWalker::parentNode, "null"},
                 {all, "", "x", &TreeWalker::nextNode, "t"},
                 {element, "i", "e", &TreeWalker::nextNode, "j"},
                 {all, "c a", "r", &TreeWalker::nextNode, "x"},
                 {all, "", "b", &TreeWalker::previousNode, "j"},
                 {element, "j i", "b", &TreeWalker::previousNode, "x"},
                 {all, "r", "c", &TreeWalker::previousNode, "#document"},
                 {0, "", "r", &TreeWalker::nextNode, "null"}};
    for (const auto& [show, refused, from, step, wanted] : cases) {
        Tree tree("r(!'c' a(x) 't' &e(i(j)) b)");
        Refuse filter(refused);
        TreeWalker* const walker = tree.document->createTreeWalker(tree["r"], show, &filter, false);
        EXPECT_EQ(walker->getCurrentNode(), tree["r"]);
        walker->setCurrentNode(tree[from]);
        const Node* const result = (walker->*step)();
        EXPECT_EQ(short_name(result), wanted) << from;
        EXPECT_EQ(walker->getCurrentNode(), result == nullptr ? tree[from] : result);
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

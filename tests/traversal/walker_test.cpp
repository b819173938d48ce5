// Node iterators and tree walkers.
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

const std::map<std::string, unsigned long> shows = {
    {"all", all}, {"element", 1}, {"text", 4 + 128}, {"document", 256}, {"nothing", 0}};

TEST(NodeIterator, Steps) {
    // From where, what is shown, who is refused, and the steps forward and back: not bound to the
    // root.
    for (const Row& row : rows_of(R"(
r => all => => r a x b i c t null r => r #document null r
a => all => => a x b i c t null a => a r #document null a
b => all => => b i c t null b => b x a r #document null b
#document => all => => #document r a x => #document null #document
r => element => => r a x i null r => r null r
r => text => => c t null c => null null
t => all => i a => t null t => t c b x r #document null t
r => nothing => => null null => null null
r => document => => null null => #document null #document
)")) {
        Tree tree("r(a(x) &b(i) !'c' 't')");
        Refuse filter(row[2]);
        for (const char letter : {'n', 'p'}) {
            const std::string& names = row.at(letter == 'n' ? 3 : 4);
            qvox::NodeIterator* const iterator = tree.document->createNodeIterator(
                tree[row[0].c_str()], shows.at(row[1]), &filter, false);
            EXPECT_EQ(walk(iterator, std::string(split(names, ' ').size(), letter)), names);
            tree.document->freeNodeIterator(iterator);
        }
        EXPECT_EQ(filter.asked.empty(), row[1] == "nothing");
    }
}

TEST(NodeIterator, TurningAndDetaching) {
    Tree tree("r(a b)");
    qvox::NodeIterator* iterator =
        tree.document->createNodeIterator(tree["r"], NodeFilter::SHOW_ELEMENT, nullptr, true);
    EXPECT_EQ(walk(iterator, "nnpnn"), "r a r a b");
    // It stands on the node that it returned last, wherever that has gone.
    tree["a"]->appendChild(tree["b"]);
    EXPECT_EQ(walk(iterator, "pnnnn"), "a b null r a");
    tree.drop(tree["r"]->removeChild(tree["a"]));
    EXPECT_EQ(walk(iterator, "nnn"), "b null r");
    EXPECT_TRUE(iterator->getExpandEntityReferences());
    EXPECT_TRUE(iterator->getRoot() == tree["r"] && iterator->getFilter() == nullptr);
    tree.document->freeNodeIterator(iterator);

    // The standard's value for acceptance refuses.
    Refuse standard("r a b", 1);
    iterator = tree.document->createNodeIterator(tree["r"], all, &standard, false);
    EXPECT_EQ(walk(iterator, "n"), "null");
    EXPECT_EQ(iterator->getFilter(), &standard);
    for (int i = 0; i < 2; ++i) {
        iterator->detach();
        EXPECT_TRUE(iterator->getRoot() == nullptr && iterator->getFilter() == nullptr);
        EXPECT_EQ(iterator->getWhatToShow(), all);
        for (const char* const step : {"n", "p"}) {
            EXPECT_EQ(raised_by([&] { walk(iterator, step); }),
                      "DOM 11 NodeIterator already detached");
        }
    }
    tree.document->freeNodeIterator(iterator);
    EXPECT_EQ(raised_by([&] { tree.document->createNodeIterator(nullptr, all, nullptr, false); }),
              "DOM 9 NodeIterator root is null");
    EXPECT_EQ(raised_by([&] { tree.document->createTreeWalker(nullptr, all, nullptr, false); }),
              "DOM 9 TreeWalker root is null");
    tree.document->freeNodeIterator(nullptr);
    tree.document->freeTreeWalker(nullptr);
}

TEST(TreeWalker, Steps) {
    const std::map<std::string, Node* (TreeWalker::*)()> steps = {
        {"firstChild", &TreeWalker::firstChild},
        {"lastChild", &TreeWalker::lastChild},
        {"nextSibling", &TreeWalker::nextSibling},
        {"previousSibling", &TreeWalker::previousSibling},
        {"nextNode", &TreeWalker::nextNode},
        {"previousNode", &TreeWalker::previousNode},
        {"parentNode", &TreeWalker::parentNode}};
    // Where it stands, the step, what is shown, and what is refused.
    for (const Row& row : cells_of(R"(
r firstChild all => c  r firstChild element a => b  r firstChild all c a t e b => null
e firstChild element i => null  r lastChild all b e => t  r lastChild text => t
a nextSibling all => t  a nextSibling element => b  b previousSibling all => e
b previousSibling element => a  b previousSibling all e t a c => null
x parentNode all => a  x parentNode all a => r  r parentNode all => #document
#document parentNode all => null  r parentNode element => null
x nextNode all => t  e nextNode element i => j  r nextNode all c a => x  r nextNode nothing => null
b previousNode all => j  b previousNode element j i => x  c previousNode all r => #document
)")) {
        const Words words = split(row[0], ' ');
        Tree tree("r(!'c' a(x) 't' &e(i(j)) b)");
        std::string refused;
        for (std::size_t i = 3; i < words.size(); ++i) refused += words[i] + ' ';
        Refuse filter(refused);
        TreeWalker* const walker =
            tree.document->createTreeWalker(tree["r"], shows.at(words[2]), &filter, false);
        EXPECT_EQ(walker->getCurrentNode(), tree["r"]);
        Node* const from = tree[words[0].c_str()];
        walker->setCurrentNode(from);
        const Node* const result = (walker->*steps.at(words[1]))();
        EXPECT_EQ(short_name(result), row[1]) << row[0];
        EXPECT_EQ(walker->getCurrentNode(), result == nullptr ? from : result);
        tree.document->freeTreeWalker(walker);
    }
}

TEST(TreeWalker, CurrentNode) {
    Tree tree("r(a b)");
    Tree other("o(p)");
    Refuse filter("");
    TreeWalker* const walker = tree.document->createTreeWalker(tree["a"], 0x1, &filter, true);
    EXPECT_TRUE(walker->getRoot() == tree["a"] && walker->getFilter() == &filter);
    EXPECT_TRUE(walker->getWhatToShow() == 1 && walker->getExpandEntityReferences());
    EXPECT_EQ(raised_by([&] { walker->setCurrentNode(nullptr); }),
              "DOM 9 NodeIterator root is null");
    EXPECT_EQ(walker->getCurrentNode(), tree["a"]);
    EXPECT_EQ(walker->nextNode(), tree["b"]);
    EXPECT_EQ(walker->nextNode(), nullptr);
    EXPECT_EQ(walker->getCurrentNode(), tree["b"]);
    walker->setCurrentNode(other["o"]);
    EXPECT_EQ(walker->firstChild(), other["p"]);
    EXPECT_EQ(walker->nextNode(), nullptr);
    EXPECT_EQ(filter.asked, "b p ");  // what isn't shown is not asked about
    tree.document->freeTreeWalker(walker);
}

}  // namespace
}  // namespace qvox_test

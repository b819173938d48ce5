// The section "large": what a step costs in trees that are very wide or very deep, at half of the
// full size and at full size. It has to cost the same, but for what lies in the caches.
#include <algorithm>
#include <ctime>
#include <string>

#include <qvox/qvox.h>

#include "sections.h"
#include "table.h"

namespace bench {
namespace {

using qvox::Document;
using qvox::Element;
using qvox::Node;

/// Steps of the full size, of documents of the usual size.
constexpr std::size_t bytesOfStep = 16;
constexpr std::size_t smallerBy = 2;
/// There are fewer attributes than children.
constexpr int attributesLess = 10;
/// Nanoseconds of a step in the larger tree. Steps whose cost grows with the tree take far more.
constexpr double atMost = 2000;

/// A document with a root, and what hangs below it.
class LargeTree {
public:
    LargeTree() { root = static_cast<Element*>(add(document, "root")); }
    LargeTree(const LargeTree&) = delete;
    LargeTree& operator=(const LargeTree&) = delete;
    ~LargeTree() {
        if (document != nullptr) parser.freeNode(document);
    }

    Node* newElement(const char* name) const { return document->createElement(name); }
    Node* add(Node* parent, const char* name) const {
        return parent->appendChild(newElement(name));
    }

    qvox::DOMParser parser;
    Document* document = parser.getImplementation()->createDocument("", "", nullptr);
    Element* root = nullptr;
};

using Operation = void (*)(LargeTree& tree, int count);

void buildSiblings(LargeTree& tree, int count) {
    for (int i = 0; i < count; ++i) tree.add(tree.root, "child");
}

void buildLevels(LargeTree& tree, int count) {
    Node* innermost = tree.root;
    for (int i = 0; i < count; ++i) innermost = tree.add(innermost, "level");
}

void buildAttributes(LargeTree& tree, int count) {
    for (int i = 0; i < count; ++i) {
        tree.root->setAttribute(("a" + std::to_string(i)).c_str(), "value");
    }
}

template <Node* (Node::*next)() const>
void follow(const Node* node) {
    while (node != nullptr) node = (node->*next)();
}

void walkForward(LargeTree& tree, int) {
    follow<&Node::getNextSibling>(tree.root->getFirstChild());
}

void walkBack(LargeTree& tree, int) {
    follow<&Node::getPreviousSibling>(tree.root->getLastChild());
}

void walkDown(LargeTree& tree, int) { follow<&Node::getFirstChild>(tree.root); }

void walkUp(LargeTree& tree, int) {
    const Node* node = tree.root;
    while (node->getFirstChild() != nullptr) node = node->getFirstChild();
    follow<&Node::getParentNode>(node);
}

template <typename List>
void visitItems(const List& list, int count) {
    for (int i = 0; i < count; ++i) list.item(i);
}

void childrenByNumber(LargeTree& tree, int count) {
    visitItems(*tree.root->getChildNodes(), count);
}

void attributesByNumber(LargeTree& tree, int count) {
    visitItems(*tree.root->getAttributes(), count);
}

void insertInFront(LargeTree& tree, int count) {
    for (int i = 0; i < count; ++i) {
        tree.root->insertBefore(tree.newElement("new"), tree.root->getFirstChild());
    }
}

void insertInTheMiddle(LargeTree& tree, int count) {
    Node* const middle = tree.root->getChildNodes()->item(count / 2);
    for (int i = 0; i < count; ++i) tree.root->insertBefore(tree.newElement("new"), middle);
}

void removeChildren(LargeTree& tree, int) {
    while (Node* const first = tree.root->getFirstChild()) {
        tree.parser.freeNode(tree.root->removeChild(first));
    }
}

void removeAttributes(LargeTree& tree, int count) {
    for (int i = 0; i < count; ++i) {
        tree.root->removeAttribute(("a" + std::to_string(i)).c_str());
    }
}

void clone(LargeTree& tree, int) { tree.parser.freeNode(tree.root->cloneNode(true)); }

void normalize(LargeTree& tree, int) { tree.root->normalize(); }

void freeAll(LargeTree& tree, int) {
    tree.parser.freeNode(tree.document);
    tree.document = nullptr;
}

struct Row {
    const char* name;
    Operation build;
    Operation measured;  // null for the building
    int fewer = 1;
};

constexpr Row rows[] = {
    {"siblings: build", buildSiblings, nullptr},
    {"siblings: walk forward", buildSiblings, walkForward},
    {"siblings: walk back", buildSiblings, walkBack},
    {"siblings: by item(i)", buildSiblings, childrenByNumber},
    {"siblings: insert in front", buildSiblings, insertInFront},
    {"siblings: insert in the middle", buildSiblings, insertInTheMiddle},
    {"siblings: remove and free", buildSiblings, removeChildren},
    {"siblings: clone and free", buildSiblings, clone},
    {"siblings: normalise", buildSiblings, normalize},
    {"siblings: free", buildSiblings, freeAll},
    {"levels: build", buildLevels, nullptr},
    {"levels: walk down", buildLevels, walkDown},
    {"levels: walk down and up", buildLevels, walkUp},
    {"levels: clone and free", buildLevels, clone},
    {"levels: normalise", buildLevels, normalize},
    {"levels: free", buildLevels, freeAll},
    {"attributes: build", buildAttributes, nullptr, attributesLess},
    {"attributes: by item(i)", buildAttributes, attributesByNumber, attributesLess},
    {"attributes: remove by name", buildAttributes, removeAttributes, attributesLess},
    {"attributes: clone and free", buildAttributes, clone, attributesLess},
    {"attributes: free", buildAttributes, freeAll, attributesLess},
};

/// Nanoseconds of processor time a step.
double costOfStep(const Row& row, int count) {
    LargeTree tree;
    if (row.measured != nullptr) row.build(tree, count);
    const std::clock_t start = std::clock();
    (row.measured != nullptr ? row.measured : row.build)(tree, count);
    const auto spent = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    return spent * 1e9 / count;
}

/// Whatever else the machine does only ever adds.
double leastCost(const Row& row, std::size_t steps, int rounds) {
    const int count = std::max(1, static_cast<int>(steps) / row.fewer);
    double least = costOfStep(row, count);
    for (int round = 1; round < rounds; ++round) least = std::min(least, costOfStep(row, count));
    return least;
}

bool printRow(const Row& row, const Settings& settings, Table& table) {
    const std::size_t steps = settings.documentSize / bytesOfStep;
    const double few = leastCost(row, steps / smallerBy, settings.rounds);
    const double many = leastCost(row, steps, settings.rounds);
    table.row({row.name, std::to_string(steps / static_cast<std::size_t>(row.fewer)), cell(few, 1),
               cell(many, 1), cell(many / few, 2), cell(atMost, 0)});
    return many <= atMost;
}

}  // namespace

bool printLargeTrees(const Settings& settings, std::ostream& stream) {
    Table table(
        stream,
        {"Large trees, ns a step", "steps", "half of them", "all", "times as dear", "at most"}, 32);
    bool allMet = true;
    for (const Row& row : rows) {
        if (settings.wants(row.name)) allMet = printRow(row, settings, table) && allMet;
    }
    return allMet;
}

}  // namespace bench

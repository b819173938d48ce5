// A million levels and a million children: nothing recurses on the depth, and what is said to be
// linear is. A quadratic step would run into the time limit of the tests.
#include <gtest/gtest.h>

#include "support/tree_text.h"
#include "writer/written.h"

namespace qvox_test {
namespace {

using qvox::Document;
using qvox::Element;
using qvox::Node;

const int million = 1000000;

// The node with `levels` nodes above it, each made by `above`.
template <typename Above>
Node* pile(Node* node, int levels, Above above) {
    for (int i = 0; i < levels; ++i) node = above(node);
    return node;
}

class Deep : public testing::Test {
protected:
    Deep() {
        document->appendChild(pile(bottom, million, [this](Node* node) {
            Node* const above = document->createElement("a");
            above->appendChild(node);
            return above;
        }));
    }

    Tree tree;
    Document* const document = tree.document;
    Node* const bottom = tree.make("b('x' 'y')");
};

TEST_F(Deep, SearchAndWalk) {
    EXPECT_EQ(document->getElementsByTagName("*")->getLength(), million + 1);
    EXPECT_EQ(document->getDocumentElement()->getElementsByTagName("b")->getLength(), 1);
    EXPECT_EQ(document->getElementById("x"), nullptr);
    qvox::NodeIterator* const iterator =
        document->createNodeIterator(document, qvox::NodeFilter::SHOW_ALL, nullptr, true);
    int count = 0;
    while (iterator->nextNode() != nullptr) ++count;
    document->freeNodeIterator(iterator);
    EXPECT_EQ(count, million + 4);
    document->normalize();
    EXPECT_EQ(tree_text(bottom), "b('xy')");
    // To the top and back without the children that the walk passes.
    EXPECT_EQ(raised_by([&] { bottom->appendChild(document->getDocumentElement()); }),
              "DOM 3 child node is not acceptable");
}

TEST_F(Deep, CopiesAndBytes) {
    Node* const clone = tree.drop(document->cloneNode(true));
    Tree target;
    Node* const import = target.document->importNode(document->getDocumentElement(), true);
    target.document->appendChild(import);
    for (Node* node : {clone, import}) {
        int levels = 0;
        for (; node->hasChildNodes(); node = node->getFirstChild()) ++levels;
        EXPECT_NEAR(levels, million + 1, 1);
        EXPECT_EQ(tree_text(node->getParentNode()), "b('x' 'y')");
    }
    const std::string bytes = in_file(document, "EUC-JP");
    ASSERT_EQ(bytes.size(), 7000009U);
    EXPECT_EQ(bytes.substr(2999997, 12), "<a><b>xy</b>");
    EXPECT_EQ(measured(document), 14000020);
}

TEST_F(Deep, Ranges) {
    Node* const top = document->getDocumentElement();
    Node* const text = bottom->getLastChild();
    qvox::Range* const range = document->createRange();
    range->setEnd(text, 1);
    range->setStart(bottom->getFirstChild(), 0);
    EXPECT_EQ(range->getCommonAncestorContainer(), bottom);
    range->setStartBefore(top);
    EXPECT_EQ(range->getCommonAncestorContainer(), document);
    EXPECT_EQ(range->compareBoundaryPoints(qvox::Range::START_TO_END, range), 1);
    EXPECT_EQ(range->toString().length(), 3 * million + 3 + 2);
    const Node* deepest = tree.drop(range->cloneContents());
    for (int i = 0; i < million + 1; ++i) deepest = deepest->getFirstChild();
    EXPECT_EQ(tree_text(deepest), "b('x' 'y')");
    range->deleteContents();
    EXPECT_EQ(tree_text(bottom), "b('')");
    // From the innermost text up to the end of the document, where the outermost element closes.
    range->setStart(text, 0);
    range->setEndAfter(top);
    const Node* const moved = tree.drop(range->extractContents());
    EXPECT_EQ(moved->getChildNodes()->getLength(), million + 1);
    EXPECT_EQ(tree.text(), "/");
    document->freeRange(range);
}

// Freeing goes down through maps and attributes too.
TEST(Depth, OtherWaysDown) {
    Tree tree;
    Document* const document = tree.document;
    document->appendChild(pile(tree.make("b"), million / 3, [&](Node* node) {
        Node* const reference = document->createEntityReference("r");
        qvox::Attr* const attribute = document->createAttribute("x");
        Element* const above = document->createElement("a");
        reference->appendChild(node);
        attribute->appendChild(reference);
        above->setAttributeNode(attribute);
        return above;
    }));
    document->appendChild(pile(tree.make("b"), million / 3, [&](Node* node) {
        Element* const above = document->createElement("a");
        above->setAttribute("x", "1");
        above->getAttributes()->setNamedItem(node);
        return above;
    }));
    document->appendChild(pile(tree.make("%d"), million / 10, [&](Node* node) {
        Node* const inner = tree.parser.createDocument();
        inner->appendChild(node);
        Node* const above = tree.make("%d");
        above->appendChild(inner);
        return above;
    }));
    EXPECT_EQ(document->getElementsByTagName("*")->getLength(), 1);
}

TEST(Depth, FragmentsInFragments) {
    for (const bool append : {true, false}) {
        Tree tree("a(b)");
        std::vector<Node*> fragments;
        Node* const place = tree.drop(tree.make("!''"));
        fragments.push_back(pile(tree.make("#(c)"), million / 4, [&](Node* node) {
            fragments.push_back(node);
            Node* const above = tree.document->createDocumentFragment();
            above->appendChild(place);
            above->replaceChild(node, place);
            return above;
        }));
        tree["a"]->insertBefore(fragments.back(), append ? nullptr : tree["b"]);
        EXPECT_EQ(tree.text(), append ? "/(a(b c))" : "/(a(c b))");
        for (Node* const fragment : fragments) tree.parser.freeNode(fragment);
    }
}

TEST(Wide, WalksAndMoves) {
    Tree tree("a");
    Document* const document = tree.document;
    Node* const parent = tree["a"];
    for (int i = 0; i < million; ++i) parent->appendChild(document->createTextNode("x"));
    const qvox::NodeList* const list = parent->getChildNodes();
    ASSERT_EQ(list->getLength(), million);
    int steps = 0;
    for (Node* node = parent->getFirstChild(); node != nullptr; node = node->getNextSibling()) {
        if (list->item(steps++) != node) FAIL();
    }
    for (Node* node = parent->getLastChild(); node != nullptr; node = node->getPreviousSibling()) {
        if (list->item(--steps) != node) FAIL();
    }
    EXPECT_EQ(steps, 0);
    qvox::TreeWalker* const walker = document->createTreeWalker(parent, 4, nullptr, true);
    while (walker->nextNode() != nullptr) ++steps;
    EXPECT_EQ(steps, million);
    while (walker->previousSibling() != nullptr) --steps;
    EXPECT_EQ(steps, 1);
    document->freeTreeWalker(walker);

    Node* const clone = tree.drop(parent->cloneNode(true));
    while (parent->hasChildNodes()) clone->appendChild(parent->removeChild(parent->getLastChild()));
    for (int i = 0; i < million; ++i) {
        Node* const place = i % 2 == 0 ? nullptr : parent->getFirstChild();
        parent->insertBefore(clone->getFirstChild(), place);
    }
    EXPECT_EQ(clone->getChildNodes()->getLength(), million);
    parent->normalize();
    EXPECT_EQ(parent->getFirstChild()->getNodeValue().length(), million);
    EXPECT_EQ(parent->getLastChild(), parent->getFirstChild());
}

}  // namespace
}  // namespace qvox_test

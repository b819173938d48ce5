// A million levels and a million children: nothing recurses on the depth, and what is said to be
// linear is. A quadratic step would run into the time limit of the tests.
#include <gtest/gtest.h>

#include "support/tree_text.h"

namespace qvox_test {
namespace {

using qvox::Document;
using qvox::Element;
using qvox::Node;

const int million = 1000000;

// The node with `levels` elements above it, each made by `above`.
template <typename Above>
Node* pile(Node* node, int levels, Above above) {
    for (int i = 0; i < levels; ++i) node = above(node);
    return node;
}

class Deep : public testing::Test {
protected:
    Deep() {
        Node* const bottom = tree.make("b('x' 'y')");
        tree.document->appendChild(pile(bottom, million, [this](Node* node) {
            Node* const above = tree.document->createElement("a");
            above->appendChild(node);
            return above;
        }));
    }

    Tree tree;
    Document* const document = tree.document;
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
    Node* node = document;
    while (node->hasChildNodes()) node = node->getLastChild();
    EXPECT_EQ(tree_text(node), "'xy'");
    // To the top and back without the children that the walk passes.
    EXPECT_EQ(
        raised_by([&] { node->getParentNode()->appendChild(document->getDocumentElement()); }),
        "DOM 3 child node is not acceptable");
}

TEST_F(Deep, Copies) {
    Node* const clone = document->cloneNode(true);
    Tree target;
    Node* const import = target.document->importNode(document->getDocumentElement(), true);
    target.document->appendChild(import);
    for (Node* node : {clone, import}) {
        int levels = 0;
        for (; node->hasChildNodes(); node = node->getFirstChild()) ++levels;
        EXPECT_NEAR(levels, million + 1, 1);
        EXPECT_EQ(tree_text(node->getParentNode()), "b('x' 'y')");
    }
    tree.parser.freeNode(clone);
}

// Freeing goes down through maps and attributes too.
TEST(Depth, OtherWaysDown) {
    Tree tree;
    Document* const document = tree.document;
    tree.document->appendChild(pile(tree.make("b"), million / 3, [&](Node* node) {
        Node* const reference = document->createEntityReference("r");
        qvox::Attr* const attribute = document->createAttribute("x");
        Element* const above = document->createElement("a");
        reference->appendChild(node);
        attribute->appendChild(reference);
        above->setAttributeNode(attribute);
        return above;
    }));
    tree.document->appendChild(pile(tree.make("b"), million / 3, [&](Node* node) {
        Element* const above = document->createElement("a");
        above->setAttribute("x", "1");
        above->getAttributes()->setNamedItem(node);
        return above;
    }));
    tree.document->appendChild(pile(tree.make("%d"), million / 10, [&](Node* node) {
        Node* const inner = tree.parser.createDocument();
        inner->appendChild(node);
        Node* const above = tree.make("%d");
        above->appendChild(inner);
        return above;
    }));
    EXPECT_EQ(tree.document->getElementsByTagName("*")->getLength(), 1);
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

class Wide : public testing::Test {
protected:
    Wide() {
        for (int i = 0; i < million; ++i) parent->appendChild(document->createTextNode("x"));
    }

    Tree tree{"a"};
    Document* const document = tree.document;
    Node* const parent = tree["a"];
};

TEST_F(Wide, Walks) {
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
    parent->normalize();
    EXPECT_EQ(parent->getFirstChild()->getNodeValue().length(), million);
    EXPECT_EQ(parent->getLastChild(), parent->getFirstChild());
}

TEST_F(Wide, Moves) {
    Node* const clone = parent->cloneNode(true);
    EXPECT_EQ(clone->getChildNodes()->getLength(), million);
    Node* const fragment = tree.drop(document->createDocumentFragment());
    while (clone->hasChildNodes()) fragment->appendChild(clone->getFirstChild());
    parent->appendChild(fragment);
    EXPECT_EQ(parent->getChildNodes()->getLength(), 2 * million);
    while (parent->hasChildNodes()) clone->appendChild(parent->removeChild(parent->getLastChild()));
    for (int i = 0; i < million; ++i) parent->insertBefore(clone->getFirstChild(), nullptr);
    EXPECT_EQ(clone->getChildNodes()->getLength(), million);
    tree.parser.freeNode(clone);
}

TEST(Depth, ParsingIsLinear) {
    std::string text = "<a>";
    for (int i = 0; i < million / 4; ++i) text += "<b c='d'>e</b>";
    qvox::DOMParser parser;
    Document* const document = parse_document(parser, text + "</a>");
    EXPECT_EQ(document->getElementsByTagName("b")->getLength(), million / 4);
    parser.free(document);
}

}  // namespace
}  // namespace qvox_test

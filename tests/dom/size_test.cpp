// Large trees: work grows with its input and no faster, and nothing recurses on the depth. Were
// work to grow with the square, a test would take many minutes, and the time limit would end it.
#include <cstdint>

#include <gtest/gtest.h>

#include "support/tree_text.h"
#include "writer/written.h"

namespace qvox_test {
namespace {

using qvox::Document;
using qvox::Element;
using qvox::NamedNodeMap;
using qvox::Node;

constexpr int MANY = 200000;
constexpr int NAMES = 150000;  // the other names come a second time

// MANY pieces with names between the two texts.
std::string named_pieces(const std::string& before, const std::string& after) {
    std::string text;
    for (int i = 0; i < MANY; ++i) text += before + 'n' + std::to_string(i % NAMES) + after;
    return text;
}

// What comes a second time stands at the end.
void expect_later_ones(const NamedNodeMap* map) {
    ASSERT_NE(map, nullptr);
    ASSERT_EQ(map->getLength(), NAMES);
    EXPECT_EQ(name_text(*map->item(0)), "n" + std::to_string(MANY - NAMES));
    EXPECT_EQ(name_text(*map->item(NAMES - 1)), "n" + std::to_string(MANY - NAMES - 1));
}

TEST(Cost, Names) {
    testing::internal::CaptureStdout();  // a warning for each entity's second declaration
    Tree tree("<!DOCTYPE a [" + named_pieces("<!ENTITY ", " SYSTEM 'i'>") +
              named_pieces("<!NOTATION ", " SYSTEM 'i'>") + "]><a" + named_pieces(" ", "='v'") +
              "/>");
    testing::internal::GetCapturedStdout();
    expect_later_ones(tree.document->getDoctype()->getEntities());
    expect_later_ones(tree.document->getDoctype()->getNotations());
    const Node* const root = tree.document->getDocumentElement();
    expect_later_ones(root->getAttributes());
    expect_later_ones(tree.drop(root->cloneNode(false))->getAttributes());
}

// Downwards, and every other child of a fragment an empty fragment.
TEST(Cost, AppendedChildren) {
    Tree tree("a");
    Document* const document = tree.document;
    Node* const root = document->getDocumentElement();
    Node* innermost = root;
    Node* const fragment = tree.drop(document->createDocumentFragment());
    for (int i = 0; i < MANY; ++i) {
        innermost = innermost->appendChild(document->createElement("x"));
        static_cast<Element*>(innermost)->setAttributeNode(document->createAttribute("y"));
        Node* const place = fragment->appendChild(document->createTextNode("y"));
        tree.drop(fragment->replaceChild(document->createDocumentFragment(), place));
        fragment->appendChild(document->createTextNode("x"));
    }
    root->insertBefore(fragment, root->getFirstChild());
    EXPECT_EQ(root->getChildNodes()->getLength(), MANY + 1);
}

// Nodes that the document keeps, freed in another order than that in which it got them.
TEST(Cost, FreeingLeftOvers) {
    const Tree tree("a");
    auto* const root = static_cast<Element*>(tree.document->getFirstChild());
    std::vector<Node*> leftOvers(2 * MANY);
    for (Node*& leftOver : leftOvers) {
        root->setAttribute("x", "");
        leftOver = root->getAttributeNode("x");
        root->removeAttribute("x");
    }
    qvox::DOMParser parser;
    for (std::size_t i = 0; i < leftOvers.size(); ++i) {
        parser.freeNode(leftOvers[i * 7919 % leftOvers.size()]);
    }
}

// Of two with one name the first counts; with a prefix a name changes.
TEST(Cost, AttributesByName) {
    const Tree tree("a");
    auto* const root = static_cast<Element*>(tree.document->getFirstChild());
    const auto name = [](int i) { return qvox::Xstring(("n" + std::to_string(i)).c_str()); };
    for (int i = 0; i < MANY; ++i) root->setAttribute(name(i), name(-i));
    for (int i = 0; i < MANY; i += 2) root->removeAttribute(name(i));
    for (int i = 0; i < MANY; ++i) {
        ASSERT_EQ(root->getAttribute(name(i)), i % 2 == 0 ? qvox::Xstring::Null : name(-i));
    }
    root->setAttributeNS("u", "p:x", "first");
    root->setAttributeNS("v", "q:x", "second");
    EXPECT_EQ(root->getAttribute("q:x"), "second");
    root->getAttributeNodeNS("v", "x")->setPrefix("p");
    EXPECT_TRUE(root->getAttribute("q:x").isNull());
    EXPECT_EQ(root->getAttribute("p:x"), "first");
    EXPECT_EQ(root->getAttributeNS("v", "x"), "second");
    root->removeAttribute("p:x");
    EXPECT_EQ(root->getAttribute("p:x"), "second");
    EXPECT_TRUE(root->getAttributeNS("u", "x").isNull());
}

// Each change is followed by questions for numbers near it and far from it.
TEST(Cost, NumbersWhileChildrenComeAndGo) {
    Tree tree("a(b)");
    Node* const root = tree["a"];
    const qvox::NodeList* const list = root->getChildNodes();
    std::vector<Node*> expected = {tree["b"]};
    std::uint32_t random = 1;
    const auto below = [&random](std::size_t bound) {
        random = random * 1664525U + 1013904223U;
        return static_cast<int>((random >> 16U) % bound);
    };
    for (int step = 0; step < 6000; ++step) {
        const int ends[] = {0, list->getLength() - 1, below(expected.size())};
        const int at = ends[below(3)];
        if (step % 3 != 0 || (step > 3000 && step % 2 != 0)) {
            Node* const node = tree.document->createTextNode("x");
            root->insertBefore(node, list->item(at + step % 2));
            expected.insert(expected.begin() + at + step % 2, node);
        } else if (expected.size() > 1) {
            tree.drop(root->removeChild(list->item(at)));
            expected.erase(expected.begin() + at);
        }
        ASSERT_EQ(list->getLength(), static_cast<int>(expected.size()));
        const bool isEvery = step % 100 == 0;
        for (std::size_t i = 0; i < (isEvery ? expected.size() : 3); ++i) {
            const int number = isEvery ? static_cast<int>(i) : below(expected.size());
            ASSERT_EQ(list->item(number), expected[static_cast<std::size_t>(number)]) << step;
        }
    }
    EXPECT_EQ(list->item(list->getLength()), nullptr);
}

TEST(Cost, ChildrenInTheMiddle) {
    Tree tree("a(b c)");
    Node* const root = tree["a"];
    Node* const last = root->getLastChild();
    for (int i = 0; i < MANY; ++i) {
        root->insertBefore(tree.document->createElement("x"), last);
        EXPECT_NE(root->getChildNodes()->item(i + 1), nullptr);
    }
    for (int i = 0; i < MANY; ++i) {
        tree.parser.freeNode(root->removeChild(root->getChildNodes()->item(1 + (MANY - i) / 2)));
    }
    EXPECT_EQ(tree.text(), "/(a(b c))");
}

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

// Writing and freeing go down through maps and attributes too.
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
    EXPECT_NE(in_file(document, "EUC-JP").find("<a x=\"1\"<b/>/>/>"), std::string::npos);
}

TEST(Depth, FragmentsInFragments) {
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
    tree["a"]->insertBefore(fragments.back(), tree["b"]);
    EXPECT_EQ(tree.text(), "/(a(c b))");
    for (Node* const fragment : fragments) tree.parser.freeNode(fragment);
}

TEST(Wide, WalksAndMoves) {
    Tree tree("a");
    Document* const document = tree.document;
    Node* const parent = tree["a"];
    for (int i = 0; i < million; ++i) parent->appendChild(document->createTextNode("x"));
    const qvox::NodeList* const list = parent->getChildNodes();
    int steps = 0;
    for (Node* node = parent->getFirstChild(); node != nullptr; node = node->getNextSibling()) {
        if (list->item(steps++) != node) FAIL();
    }
    qvox::TreeWalker* const walker = document->createTreeWalker(parent, 4, nullptr, true);
    while (walker->nextNode() != nullptr) --steps;
    while (walker->previousSibling() != nullptr) ++steps;
    EXPECT_EQ(steps, million - 1);
    document->freeTreeWalker(walker);
    Node* const clone = tree.drop(parent->cloneNode(true));
    while (parent->hasChildNodes()) clone->appendChild(parent->removeChild(parent->getLastChild()));
    for (int i = 0; i < million; ++i) {
        parent->insertBefore(clone->getFirstChild(),
                             i % 2 == 0 ? nullptr : parent->getFirstChild());
    }
    EXPECT_EQ(clone->getChildNodes()->getLength(), million);
    parent->normalize();
    EXPECT_EQ(parent->getFirstChild()->getNodeValue().length(), million);
}

}  // namespace
}  // namespace qvox_test

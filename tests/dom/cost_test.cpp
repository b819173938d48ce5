// Work that grows with its input and no faster: were it to grow with the square, a test would take
// many minutes, and the time limit would end it.
#include <gtest/gtest.h>

#include "support/tree_text.h"

namespace qvox_test {
namespace {

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

TEST(Cost, GrowingDownwards) {
    const Tree tree("a");
    Node* innermost = tree.document->getDocumentElement();
    for (int i = 0; i < MANY; ++i) {
        innermost = innermost->appendChild(tree.document->createElement("x"));
        static_cast<Element*>(innermost)->setAttributeNode(tree.document->createAttribute("y"));
    }
    EXPECT_FALSE(innermost->hasChildNodes());
}

// Every other child of the fragment is an empty fragment.
TEST(Cost, FragmentsInAFragment) {
    Tree tree("a");
    qvox::Document* const document = tree.document;
    Node* const root = document->getDocumentElement();
    for (const bool inFront : {false, true}) {
        Node* const fragment = document->createDocumentFragment();
        for (int i = 0; i < MANY / 2; ++i) {
            fragment->appendChild(document->createTextNode("x"));
            Node* const place = fragment->appendChild(document->createTextNode("y"));
            tree.drop(fragment->replaceChild(document->createDocumentFragment(), place));
        }
        root->insertBefore(fragment, inFront ? root->getFirstChild() : nullptr);
        tree.drop(fragment);
    }
    EXPECT_EQ(root->getChildNodes()->getLength(), MANY);
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

// Each change is followed by questions for numbers near it and far from it.
TEST(Cost, NumbersWhileChildrenComeAndGo) {
    Tree tree("a");
    Node* const root = tree.document->getDocumentElement();
    std::vector<Node*> expected;
    root->appendChild(tree.make("b"));
    expected.push_back(root->getFirstChild());
    const qvox::NodeList* const list = root->getChildNodes();
    std::size_t random = 1;
    const auto below = [&random](std::size_t bound) {
        random = random * 6364136223846793005U + 1442695040888963407U;
        return (random >> 33U) % bound;
    };
    for (int step = 0; step < 6000; ++step) {
        const std::size_t ends[] = {0, expected.size() - 1, below(expected.size())};
        const std::size_t at = ends[below(3)];
        const auto place = expected.begin() + static_cast<std::ptrdiff_t>(at);
        const std::size_t kind = below(step < 3000 ? 3 : 6);
        if (kind < 2) {
            Node* const node = tree.document->createTextNode("x");
            expected.insert(place + (kind == 0 ? 1 : 0), node);
            root->insertBefore(node, kind == 0 ? list->item(static_cast<int>(at) + 1)
                                               : list->item(static_cast<int>(at)));
        } else if (kind > 3 && expected.size() > 1) {
            tree.drop(root->removeChild(list->item(static_cast<int>(at))));
            expected.erase(place);
        }
        ASSERT_EQ(list->getLength(), static_cast<int>(expected.size()));
        for (std::size_t i = 0; i < (step % 100 == 0 ? expected.size() : 3); ++i) {
            const std::size_t number = step % 100 == 0 ? i : below(expected.size());
            ASSERT_EQ(list->item(static_cast<int>(number)), expected[number]) << step;
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

TEST(Cost, FragmentsBetweenChildren) {
    Tree tree("a('t')");
    Node* const root = tree.document->getDocumentElement();
    Node* const fragment = tree.drop(tree.document->createDocumentFragment());
    for (const int index : {0, MANY / 2, 2 * MANY}) {  // in front of the first, a middle, the last
        for (int i = 0; i < MANY; ++i) {
            fragment->appendChild(tree.document->createElement("x"));
        }
        Node* const ref = root->getChildNodes()->item(index);
        Node* const first = fragment->getFirstChild();
        Node* const last = fragment->getLastChild();
        EXPECT_EQ(root->insertBefore(fragment, ref), last);
        EXPECT_EQ(root->getChildNodes()->item(index), first);
        EXPECT_EQ(root->getChildNodes()->item(index + MANY - 1), last);
        EXPECT_EQ(root->getChildNodes()->item(index + MANY), ref);
        EXPECT_EQ(last->getNextSibling(), ref);
        EXPECT_FALSE(fragment->hasChildNodes());
    }
    EXPECT_EQ(root->getChildNodes()->getLength(), 3 * MANY + 1);
}

}  // namespace
}  // namespace qvox_test

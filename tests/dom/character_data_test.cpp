// Text, CDATA sections and comments.
#include <gtest/gtest.h>

#include "support/tree_text.h"

namespace qvox_test {
namespace {

using qvox::CharacterData;
using qvox::Node;
using qvox::Xstring;

enum class Call { Append, Delete, Insert, Replace, Set, Substring };

std::string run(CharacterData& node, Call call, int offset, int count, const Xstring& text) {
    std::string part;
    const std::string raised = raised_by([&] {
        switch (call) {
            case Call::Append: return node.appendData(text);
            case Call::Delete: return node.deleteData(offset, count);
            case Call::Insert: return node.insertData(offset, text);
            case Call::Replace: return node.replaceData(offset, count, text);
            case Call::Set: return node.setData(text);
            case Call::Substring: part = quoted(node.substringData(offset, count));
        }
    });
    return raised + part;
}

TEST(CharacterData, Operations) {
    const char* const index = "DOM 1 invalid index";
    const int most = 2147483647;
    const struct {
        Call call;
        int offset;
        int count;
        const char* text;
        const char* result;
        const char* data = "'abc'";
    } cases[] = {
        {Call::Append, 0, 0, "de", "", "'abcde'"},
        {Call::Append, 0, 0, "", ""},
        {Call::Append, 0, 0, nullptr, ""},
        {Call::Set, 0, 0, "de", "", "'de'"},
        {Call::Set, 0, 0, "", "", "''"},
        {Call::Set, 0, 0, nullptr, "", "''"},
        {Call::Delete, 0, 1000, "", "", "''"},
        {Call::Delete, 1, 1, "", "", "'ac'"},
        {Call::Delete, 1, most, "", "", "'a'"},
        {Call::Delete, 3, 1, "", ""},
        {Call::Delete, 1, 0, "", ""},
        {Call::Delete, 4, 0, "", index},
        {Call::Delete, 1, -1, "", index},
        {Call::Delete, -1, 1, "", index},
        {Call::Delete, most, most, "", index},
        {Call::Insert, 3, 0, "d", "", "'abcd'"},
        {Call::Insert, 0, 0, "d", "", "'dabc'"},
        {Call::Insert, 1, 0, "de", "", "'adebc'"},
        {Call::Insert, 1, 0, "", ""},
        {Call::Insert, 1, 0, nullptr, ""},
        {Call::Insert, 4, 0, "d", index},
        {Call::Insert, -1, 0, "d", index},
        {Call::Insert, 4, 0, "", index},
        {Call::Replace, 1, 1, "xyz", "", "'axyzc'"},
        {Call::Replace, 1, 100, "", "", "'a'"},
        {Call::Replace, 1, 0, "x", "", "'axbc'"},
        {Call::Replace, 3, most, "x", "", "'abcx'"},
        {Call::Replace, 0, most, nullptr, "", "''"},
        {Call::Replace, 4, 0, "x", index},
        {Call::Replace, 1, -1, "x", index},
        {Call::Replace, -1, 1, "x", index},
        {Call::Substring, 1, 100, "", "'bc'"},
        {Call::Substring, 0, 2, "", "'ab'"},
        {Call::Substring, 2, most, "", "'c'"},
        {Call::Substring, 3, 1, "", "''"},
        {Call::Substring, 1, 0, "", "''"},
        {Call::Substring, 4, 0, "", index},
        {Call::Substring, 0, -1, "", index},
        {Call::Substring, -2, 3, "", index},
    };
    for (const auto& test : cases) {
        for (const char* const text : {"'abc'", "='abc'", "!'abc'"}) {
            Tree tree;
            auto* const node = static_cast<CharacterData*>(tree.drop(tree.make(text)));
            SCOPED_TRACE(&test - cases);
            EXPECT_EQ(run(*node, test.call, test.offset, test.count, test.text), test.result);
            EXPECT_EQ(quoted(node->getData()), test.data);
            EXPECT_EQ(node->getLength(), static_cast<int>(std::string(test.data).size()) - 2);
        }
    }
}

TEST(CharacterData, NullData) {
    Tree tree;
    auto* const node = static_cast<CharacterData*>(tree.drop(tree.make("-")));
    EXPECT_TRUE(node->getData().isNull());
    EXPECT_EQ(node->getLength(), 0);
    EXPECT_EQ(quoted(node->substringData(0, 1)), "''");
    EXPECT_EQ(raised_by([&] { node->deleteData(1, 0); }), "DOM 1 invalid index");
    node->appendData({});
    node->setNodeValue({});
    EXPECT_EQ(quoted(node->getNodeValue()), "-");
    node->insertData(0, "x");
    EXPECT_EQ(quoted(node->getData()), "'x'");
    // Text that is an argument to its own node.
    node->appendData(node->getData());
    node->insertData(1, node->getData());
    node->replaceData(1, 2, node->getData());
    EXPECT_EQ(quoted(node->getData()), "'xxxxxx'");
}

// Offsets count 16-bit units, also between the two of one character.
TEST(CharacterData, SurrogatePairs) {
    const unsigned short units[] = {'a', 0xD840, 0xDC0B, 'b', 0};
    Tree tree("a");
    auto* const text = tree.document->createTextNode(units);
    tree["a"]->appendChild(text);
    EXPECT_EQ(text->getLength(), 4);
    EXPECT_EQ(quoted(text->substringData(2, 2)), "'\\u{dc0b}b'");
    text->splitText(2);
    EXPECT_EQ(tree.text(), "/(a('a\\u{d840}' '\\u{dc0b}b'))");
    tree["a"]->normalize();
    text->deleteData(1, 2);
    EXPECT_EQ(tree.text(), "/(a('ab'))");
}

TEST(CharacterData, SplitText) {
    const struct {
        const char* before;
        int offset;
        const char* after;
        const char* result;
    } cases[] = {
        {"a('abc' b)", 1, "a('a' 'bc' b)", "'bc'"},
        {"a(b 'abc')", 1, "a(b 'a' 'bc')", "'bc'"},
        {"a('abc' b)", 3, "a('abc' '' b)", "''"},
        {"a('abc')", 0, "a('' 'abc')", "'abc'"},
        {"a(='abc' b)", 2, "a(='ab' 'c' b)", "'c'"},
        {"a(b('abc') 'd')", 1, "a(b('a' 'bc') 'd')", "'bc'"},
        {"a('abc')", 4, "a('abc')", "DOM 1 invalid index"},
        {"a(='abc')", -1, "a(='abc')", "DOM 1 invalid index"},
    };
    for (const auto& test : cases) {
        Tree tree(test.before);
        qvox::Text* tail = nullptr;
        auto* const text = static_cast<qvox::Text*>(tree["abc"]);
        const std::string raised = raised_by([&] { tail = text->splitText(test.offset); });
        EXPECT_EQ(raised.empty() ? tree_text(tail) : raised, test.result) << test.before;
        EXPECT_EQ(tree.text(), std::string("/(") + test.after + ')');
        if (tail == nullptr) continue;
        EXPECT_EQ(tail->getPreviousSibling(), text);
        EXPECT_EQ(tail->getOwnerDocument(), tree.document);
    }
    Tree tree;
    auto* const alone = static_cast<qvox::Text*>(tree.drop(tree.make("='abc'")));
    const Node* const tail = tree.drop(alone->splitText(2));
    EXPECT_EQ(tree_text(alone) + tree_text(tail), "='ab''c'");
    EXPECT_EQ(tail->getParentNode(), nullptr);
}

}  // namespace
}  // namespace qvox_test

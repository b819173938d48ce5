// Text, CDATA sections and comments.
#include <gtest/gtest.h>

#include "support/script.h"

namespace qvox_test {
namespace {

TEST(CharacterData, Operations) {
    const char* const index = "DOM 1 invalid index";
    // Call, what it returns, and the data then.
    const char* const cases[][3] = {{"appendData de", "", "'abcde'"},
                                    {"appendData -", "", "'abc'"},
                                    {"setData de", "", "'de'"},
                                    {"setData -", "", "''"},
                                    {"deleteData 0 1000", "", "''"},
                                    {"deleteData 1 1", "", "'ac'"},
                                    {"deleteData 1 max", "", "'a'"},
                                    {"deleteData 3 1", "", "'abc'"},
                                    {"deleteData 1 0", "", "'abc'"},
                                    {"deleteData 4 0", index, "'abc'"},
                                    {"deleteData 1 -1", index, "'abc'"},
                                    {"deleteData -1 1", index, "'abc'"},
                                    {"deleteData max max", index, "'abc'"},
                                    {"insertData 3 d", "", "'abcd'"},
                                    {"insertData 1 de", "", "'adebc'"},
                                    {"insertData 1 -", "", "'abc'"},
                                    {"insertData 4 d", index, "'abc'"},
                                    {"insertData -1 d", index, "'abc'"},
                                    {"replaceData 1 1 xyz", "", "'axyzc'"},
                                    {"replaceData 1 0 x", "", "'axbc'"},
                                    {"replaceData 3 max x", "", "'abcx'"},
                                    {"replaceData 0 max -", "", "''"},
                                    {"replaceData 4 0 x", index, "'abc'"},
                                    {"replaceData 1 -1 x", index, "'abc'"},
                                    {"replaceData -1 1 x", index, "'abc'"},
                                    {"substringData 1 100", "'bc'", "'abc'"},
                                    {"substringData 2 max", "'c'", "'abc'"},
                                    {"substringData 3 1", "''", "'abc'"},
                                    {"substringData 1 0", "''", "'abc'"},
                                    {"substringData 4 0", index, "'abc'"},
                                    {"substringData 0 -1", index, "'abc'"},
                                    {"substringData -2 3", index, "'abc'"}};
    for (const auto& [call, returned, data] : cases) {
        for (const std::string form : {"", "=", "!"}) {
            Script script("a(" + form + "'abc')");
            const std::string outcome = script.run(std::string("n: abc; n ") + call);
            const bool changed = data != std::string("'abc'");
            const std::string after = changed ? "> /(a(" + form + data + "))" : "";
            EXPECT_EQ(outcome, returned + after) << call;
            EXPECT_EQ(script.run("n getData"), data);
            EXPECT_EQ(script.run("n getLength"), std::to_string(std::string(data).size() - 2));
        }
    }
}

TEST(CharacterData, NullData) {
    // At the end the text is an argument to its own node.
    expect_steps(Script("a(-)"), {{"n: a getFirstChild; n getData", "-"},
                                  {"n getLength", "0"},
                                  {"n substringData 0 1", "''"},
                                  {"n deleteData 1 0", "DOM 1 invalid index"},
                                  {"n appendData -; n setNodeValue -; n getNodeValue", "-"},
                                  {"n insertData 0 x", "> /(a('x'))"}});
    Tree tree("a('x')");
    auto* const node = static_cast<qvox::CharacterData*>(tree["x"]);
    node->appendData(node->getData());
    node->insertData(1, node->getData());
    node->replaceData(1, 2, node->getData());
    EXPECT_EQ(tree.text(), "/(a('xxxxxx'))");
}

// Offsets count 16-bit units, also between the two of one character.
TEST(CharacterData, SurrogatePairs) {
    const unsigned short units[] = {'a', 0xD840, 0xDC0B, 'b', 0};
    Script script("a");
    script.node("a")->appendChild(script.tree.document->createTextNode(units));
    expect_steps(script, {{"t: a getFirstChild; t getLength", "4"},
                          {"t substringData 2 2", "'\\u{dc0b}b'"},
                          {"t splitText 2", "'\\u{dc0b}b' > /(a('a\\u{d840}' '\\u{dc0b}b'))"},
                          {"a normalize; t deleteData 1 2", "> /(a('ab')) + '\\u{dc0b}b'"}});
}

TEST(CharacterData, SplitText) {
    const char* const index = "DOM 1 invalid index";
    const struct {
        const char* tree;
        const char* offset;
        const char* outcome;
    } cases[] = {{"a('abc' b)", "1", "'bc' > /(a('a' 'bc' b))"},
                 {"a('abc' b)", "3", "'' > /(a('abc' '' b))"},
                 {"a('abc')", "0", "'abc' > /(a('' 'abc'))"},
                 {"a(='abc' b)", "2", "'c' > /(a(='ab' 'c' b))"},
                 {"a('abc')", "4", index},
                 {"a(='abc')", "-1", index}};
    for (const auto& [tree, offset, outcome] : cases) {
        Script script(tree);
        EXPECT_EQ(script.run("t: abc; tail: t splitText " + std::string(offset)), outcome);
        if (outcome == index) continue;
        EXPECT_EQ(script.node("tail")->getPreviousSibling(), script.node("t"));
        EXPECT_EQ(script.node("tail")->getOwnerDocument(), script.tree.document);
    }
    expect_steps(Script("a"), {{"t: +='abc'", "='abc' > /(a) + ='abc'"},
                               {"tail: t splitText 2", "'c' > /(a) + ='ab'"},
                               {"tail getParentNode", "null"}});
}

}  // namespace
}  // namespace qvox_test

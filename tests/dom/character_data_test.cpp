// Text, CDATA sections and comments.
#include "support/script.h"

namespace qvox_test {
namespace {

TEST(CharacterData, Operations) {
    // On 'abc': what a call gives and, where it changes the data, what they are then.
    for (const Row& row : cells_of(R"(
substringData 1 100 => 'bc'  substringData 2 max => 'c'  substringData 3 1 => ''
substringData 1 0 => ''  substringData 4 0 => !  substringData 0 -1 => !  substringData -2 3 => !
appendData de => > 'abcde'  appendData - =>  setData de => > 'de'  setData - => > ''
insertData 3 d => > 'abcd'  insertData 1 de => > 'adebc'  insertData 1 - =>  insertData 4 d => !
insertData -1 d => !
deleteData 0 1000 => > ''  deleteData 1 1 => > 'ac'  deleteData 1 max => > 'a'  deleteData 3 1 =>
deleteData 1 0 =>  deleteData 4 0 => !  deleteData 1 -1 => !  deleteData -1 1 => !
deleteData max max => !
replaceData 1 1 xyz => > 'axyzc'  replaceData 1 0 x => > 'axbc'  replaceData 3 max x => > 'abcx'
replaceData 0 max - => > ''  replaceData 4 0 x => !  replaceData 1 -1 x => !  replaceData -1 1 x => !
)")) {
        const std::string outcome = row[1] == "!" ? "DOM 1 invalid index" : row[1];
        const std::string data = outcome[0] == '>' ? outcome.substr(2) : "'abc'";
        for (const std::string form : {"", "=", "!"}) {
            Script script("a(" + form + "'abc')");
            EXPECT_EQ(script.run("n: abc; n " + row[0]),
                      outcome[0] == '>' ? "> /(a(" + form + data + "))" : outcome);
            EXPECT_EQ(script.run("n getData") + script.run("n getLength"),
                      data + std::to_string(data.size() - 2));
        }
    }
}

TEST(CharacterData, NullData) {
    // At the end the text is an argument to its own node.
    expect_steps("a(-)", R"(
n: a getFirstChild; n getData => -  n getLength => 0  n substringData 0 1 => ''
n deleteData 1 0 => DOM 1 invalid index  n appendData -; n setNodeValue -; n getNodeValue => -
n insertData 0 x => > /(a('x'))
)");
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
    expect_steps(script, R"(
t: a getFirstChild; t getLength => 4  t substringData 2 2 => '\u{dc0b}b'
t splitText 2 => '\u{dc0b}b' > /(a('a\u{d840}' '\u{dc0b}b'))
a normalize; t deleteData 1 2 => > /(a('ab')) + '\u{dc0b}b'
)");
}

TEST(CharacterData, SplitText) {
    for (const Row& row : cells_of(R"(
a('abc' b) => t splitText 1 => 'bc' > /(a('a' 'bc' b))
a('abc' b) => t splitText 3 => '' > /(a('abc' '' b))
a('abc') => t splitText 0 => 'abc' > /(a('' 'abc'))
a(='abc' b) => t splitText 2 => 'c' > /(a(='ab' 'c' b))
a('abc') => t splitText 4 => DOM 1 invalid index  a(='abc') => t splitText -1 => DOM 1 invalid index
a('abc') => tail: t splitText 1; tail getPreviousSibling => 'a'
a('abc') => tail: t splitText 1; tail getOwnerDocument => /
)",
                                   3)) {
        EXPECT_EQ(Script(row[0]).run("t: abc; " + row[1]), row[2]);
    }
    expect_steps("a", R"(
t: +='abc' => ='abc' > /(a) + ='abc'  tail: t splitText 2 => 'c' > /(a) + ='ab'
tail getParentNode => null
)");
}

// A text is never a null pointer, whatever it was copied from.
TEST(CharacterData, CopyOfNothing) {
    Tree tree("a");
    tree["a"]->appendChild(tree.document->createComment(qvox::Xstring()));
    qvox::Node* const copy = tree.drop(tree["a"]->cloneNode(true));
    auto* const comment = static_cast<qvox::CharacterData*>(copy->getFirstChild());
    ASSERT_NE(comment->getData().data(), nullptr);
    comment->appendData("");
    EXPECT_EQ(comment->getData().data()[0], 0);
}

}  // namespace
}  // namespace qvox_test

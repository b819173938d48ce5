// The form of each node, in memory and, indented, on standard output.
#include <gtest/gtest.h>

#include "support/tree_text.h"
#include "writer/written.h"

namespace qvox_test {
namespace {

TEST(NodeWriter, Forms) {
    const struct {
        const char* source;
        const char* written;  // null for the same
    } cases[] = {
        {R"(<a b='say "x", it&apos;s > &#38; <'/>)",
         R"(<a b="say &quot;x&quot;, it&apos;s &gt; &amp; &lt;"/>)"},
        {R"(<a>it's "x" > y &lt;&amp;</a>)", "<a>it&apos;s &quot;x&quot; &gt; y &lt;&amp;</a>"},
        {R"(<a>x<![CDATA[a<b&"']]>y<![CDATA[]]></a>)", nullptr},
        {R"(<a><!-- <&'"> --><?p <&'"> ?></a>)", nullptr},
        {"<a><?p?><?q ?></a>", "<a><?p ?><?q ?></a>"},
        {"<a></a>", "<a/>"},
        {R"(<p:a xmlns:p="u" p:b="1" xmlns="v"><c xmlns=""/></p:a>)", nullptr},
        {"<!--a--><?b c?><d> <e/>\n</d><!--f--><?g h?>", nullptr},
        {R"(<!DOCTYPE r PUBLIC "p" "s"><r/>)", R"(<!DOCTYPE r PUBLIC "p" "s" []><r/>)"},
        {"<!DOCTYPE r SYSTEM 's'><r/>", R"(<!DOCTYPE r SYSTEM "s" []><r/>)"},
        {"<!DOCTYPE r [ <!-- c --><?p d?>\n]><r/>", "<!DOCTYPE r []><r/>"},
        {R"(<!DOCTYPE r [<!ENTITY % p "x"><!ENTITY e SYSTEM "f" NDATA n><!ENTITY f PUBLIC "p" "s">)"
         R"(<!NOTATION n PUBLIC "p"><!NOTATION m SYSTEM "s"><!NOTATION l PUBLIC "p" "s">]><r/>)",
         nullptr},
        {R"(<!DOCTYPE r [<!ENTITY g "<i>&#38;amp;'</i>">]><r>&g;y</r>)",
         R"(<!DOCTYPE r [<!ENTITY g "<i>&amp;'</i>">]><r><i>&amp;&apos;</i>y</r>)"},
        {"<!DOCTYPE r [<!ELEMENT a ( b , c )* ><!ELEMENT b EMPTY>]><r/>",
         "<!DOCTYPE r [<!ELEMENT a (b,c)*><!ELEMENT b EMPTY>]><r/>"},
        {"<!DOCTYPE r [<!ATTLIST a x (p | q) #IMPLIED y CDATA '1' z CDATA #FIXED '2'>]><r/>",
         R"(<!DOCTYPE r [<!ATTLIST a x (p|q) #IMPLIED y CDATA "1" z CDATA #FIXED "2">]><r/>)"},
        // A second list of an element has the first one's attributes too.
        {"<!DOCTYPE r [<!ATTLIST r a CDATA '1'><!ATTLIST r b CDATA '2'>]><r c='3'/>",
         R"(<!DOCTYPE r [<!ATTLIST r a CDATA "1"><!ATTLIST r a CDATA "1" b CDATA "2">]>)"
         R"(<r c="3" a="1" b="2"/>)"},
        // Made by hand.
        {"", ""},
        {"a(&e('not') 'x' &f #('y' b(#()) #('z')))", "<a>&e;x&f;y<b></b>z</a>"},
        {"a[b=-](!- =- ?p- c(-))", R"(<a b=""><!----><![CDATA[]]><?p ?><c></c></a>)"},
        {"%d(!'c' b ?p'd') a b", "<!DOCTYPE d []><a/><b/>"},
        {"a(']]>')", "<a>]]&gt;</a>"},
    };
    for (const auto& [source, written] : cases) {
        const Tree tree(source);
        EXPECT_EQ(in_memory(tree.document), written != nullptr ? written : source);
    }
    // A fragment gets its children under nodes that accept none by themselves.
    Tree tree("%d a(!'x' ='y' ?p'z' &e 't')");
    for (const char* const name : {"d", "x", "y", "z", "e", "t"}) {
        tree[name]->appendChild(tree.drop(tree.make("#(b 'c')")));
        ASSERT_TRUE(tree[name]->hasChildNodes());
    }
    EXPECT_EQ(in_memory(tree.document), "<!DOCTYPE d []><a><!--x--><![CDATA[y]]><?p z?>&e;t</a>");
}

TEST(NodeWriter, Indented) {
    const char* const cases[][2] = {
        {"", ""},
        {"a", "<a/>\n"},
        {"?xml'version=\"1.0\"' !'c' a(b c(d('x') e) ?p'q')",
         "<?xml version=\"1.0\"?>\n<!--c-->\n<a>\n  <b/>\n  <c>\n    <d>x</d>\n    <e/>\n  </c>\n"
         "  <?p q?>\n</a>\n"},
        // Markup behind text stays on its line, and so does the end tag of an element that ends in
        // text.
        {"a('x' b 'y' c d)", "<a>x<b/>y<c/>\n  <d/>\n</a>\n"},
        {"a(b 'x') ", "<a>\n  <b/>x</a>\n"},
        {"a(b('x' c) d)", "<a>\n  <b>x<c/>\n  </b>\n  <d/>\n</a>\n"},
        {"a(='x' 'y' ='z')", "<a>\n  <![CDATA[x]]>y<![CDATA[z]]>\n</a>\n"},
        {"a(!'x\ny' ' \n ')", "<a>\n  <!--x\r\ny--> \r\n </a>\n"},
        {"a(#())", "<a>\n</a>\n"},
        // References belong to the text around them.
        {"a(b('x' &e 'y') c)", "<a>\n  <b>x&e;y</b>\n  <c/>\n</a>\n"},
        {"a(c(&e &f 'x' &g) d(&e e))", "<a>\n  <c>&e;&f;x&g;</c>\n  <d>&e;<e/>\n  </d>\n</a>\n"},
        // Each of two texts side by side keeps a piece of markup on the line.
        {"a('x' 'y' b c d)", "<a>xy<b/><c/>\n  <d/>\n</a>\n"},
        {"%d a", "<!DOCTYPE d [\n]>\n<a/>\n"},
        {"<!DOCTYPE a PUBLIC 'p' 's' [<!ELEMENT a ANY><!ENTITY e 'x\ny'>]><a/>",
         "<!DOCTYPE a PUBLIC \"p\" \"s\" [\n  <!ELEMENT a ANY>\n  <!ENTITY e \"x\r\ny\">\n]>\n"
         "<a/>\n"}};
    for (const auto& [source, written] : cases) {
        const Tree tree(source);
        EXPECT_EQ(on_standard_output(tree.document), '\n' + std::string(written)) << source;
    }
    EXPECT_EQ(on_standard_output(Parsed(u"<a>\u3042\u00E9</a>").document), "\n<a>\x82\xA0?</a>\n");
}

// Long texts are looked at a stretch at a time.
TEST(NodeWriter, ReplacementsWhereverTheyStand) {
    const std::string replaced[][2] = {{"<", "&lt;"},   {">", "&gt;"},    {"&", "&amp;"},
                                       {"'", "&apos;"}, {"\"", "&quot;"}, {"\n", "\r\n"}};
    const Tree tree("a('x')");
    qvox::Node* const text = tree.document->getDocumentElement()->getFirstChild();
    for (const auto& [symbol, replacement] : replaced) {
        for (std::size_t at = 0; at < 130; ++at) {
            const std::string before(at, 'b');
            const std::string behind(at % 3 * 40, '=');
            text->setNodeValue((before + symbol + behind).c_str());
            EXPECT_EQ(on_standard_output(tree.document),
                      "\n<a>" + before + replacement + behind + "</a>\n");
        }
    }
}

}  // namespace
}  // namespace qvox_test

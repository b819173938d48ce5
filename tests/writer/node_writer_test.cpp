// The form of each node, in memory and, indented, on standard output.
#include <gtest/gtest.h>

#include "support/tree_text.h"
#include "writer/written.h"

namespace qvox_test {
namespace {

std::u16string widened(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

TEST(NodeWriter, WhatWasParsed) {
    const struct {
        const char* source;
        const char* written;  // null for the same
    } cases[] = {
        {"<a b=\"1&lt;2\">x &amp; y</a>", nullptr},
        {"<a b='say \"x\"'/>", "<a b=\"say &quot;x&quot;\"/>"},
        {"<a b=\"it's > &#38; <\"/>", "<a b=\"it&apos;s &gt; &amp; &lt;\"/>"},
        {"<a>it's \"x\" > y</a>", "<a>it&apos;s &quot;x&quot; &gt; y</a>"},
        {"<a>x<![CDATA[a<b&\"']]>y<![CDATA[]]></a>", nullptr},
        {"<a><!-- <&'\"> --><?p <&'\"> ?></a>", nullptr},
        {"<a><?p?><?q ?></a>", "<a><?p ?><?q ?></a>"},
        {"<a></a>", "<a/>"},
        {"<p:a xmlns:p='u' p:b='1' xmlns='v'><c xmlns=''/></p:a>",
         "<p:a xmlns:p=\"u\" p:b=\"1\" xmlns=\"v\"><c xmlns=\"\"/></p:a>"},
        {"<!--a--><?b c?><d> <e/>\n</d><!--f--><?g h?>", nullptr},
        {"<!DOCTYPE r PUBLIC \"p\" \"s\"><r/>", "<!DOCTYPE r PUBLIC \"p\" \"s\" []><r/>"},
        {"<!DOCTYPE r SYSTEM 's'><r/>", "<!DOCTYPE r SYSTEM \"s\" []><r/>"},
        {"<!DOCTYPE r [ <!-- c --><?p d?>\n]><r/>", "<!DOCTYPE r []><r/>"},
        {"<!DOCTYPE r [<!ENTITY % p \"x\"><!ENTITY e SYSTEM \"f\" NDATA n>"
         "<!ENTITY f PUBLIC \"p\" \"s\"><!ENTITY g \"<i>&#38;amp;'</i>\">"
         "<!NOTATION n PUBLIC \"p\"><!NOTATION m SYSTEM \"s\"><!NOTATION l PUBLIC \"p\" \"s\">"
         "]><r/>",
         "<!DOCTYPE r [<!ENTITY % p \"x\"><!ENTITY e SYSTEM \"f\" NDATA n>"
         "<!ENTITY f PUBLIC \"p\" \"s\"><!ENTITY g \"<i>&amp;'</i>\">"
         "<!NOTATION n PUBLIC \"p\"><!NOTATION m SYSTEM \"s\"><!NOTATION l PUBLIC \"p\" \"s\">"
         "]><r/>"},
        {"<!DOCTYPE r [<!ELEMENT a ( b , c )* ><!ELEMENT b EMPTY>]><r/>",
         "<!DOCTYPE r [<!ELEMENT a (b,c)*><!ELEMENT b EMPTY>]><r/>"},
        {"<!DOCTYPE r [<!ATTLIST a x (p | q) #IMPLIED y CDATA '1' z CDATA #FIXED '2'>]><r/>",
         "<!DOCTYPE r [<!ATTLIST a x (p|q) #IMPLIED y CDATA \"1\" z CDATA #FIXED \"2\">]><r/>"},
        // A second list of an element has the first one's attributes too.
        {"<!DOCTYPE r [<!ATTLIST r a CDATA '1'><!ATTLIST r b CDATA '2'>]><r c='3'/>",
         "<!DOCTYPE r [<!ATTLIST r a CDATA \"1\"><!ATTLIST r a CDATA \"1\" b CDATA \"2\">]>"
         "<r c=\"3\" a=\"1\" b=\"2\"/>"},
        {"<!DOCTYPE r [<!ENTITY e \"<i>x</i>\">]><r>&e;y&e;</r>",
         "<!DOCTYPE r [<!ENTITY e \"<i>x</i>\">]><r><i>x</i>y<i>x</i></r>"},
    };
    for (const auto& [source, written] : cases) {
        const Parsed parsed(widened(source));
        EXPECT_EQ(in_memory(parsed.document), written != nullptr ? written : source);
    }
}

TEST(NodeWriter, WhatWasMadeByHand) {
    const struct {
        const char* tree;
        const char* written;
    } cases[] = {
        {"", ""},
        {"a('x' &e 'y' &f)", "<a>x&e;y&f;</a>"},
        {"a(&e('not') 'x' #('y' b(#()) #('z')))", "<a>&e;xy<b></b>z</a>"},
        {"a(-)", "<a></a>"},
        {"a[b=-](!- =- ?p-)", "<a b=\"\"><!----><![CDATA[]]><?p ?></a>"},
        {"%d(!'c' b ?p'd') a", "<!DOCTYPE d []><a/>"},
        {"a b", "<a/><b/>"},
        {"a(']]>')", "<a>]]&gt;</a>"},
    };
    for (const auto& [tree, written] : cases) {
        const Tree made(tree);
        EXPECT_EQ(in_memory(made.document), written) << tree;
    }
}

// A fragment gets its children under nodes that accept none by themselves.
TEST(NodeWriter, ChildrenThatAreNotWritten) {
    Tree tree("%d a(!'x' ='y' ?p'z' &e 't')");
    for (const char* const name : {"d", "x", "y", "z", "e", "t"}) {
        qvox::Node* const fragment = tree.drop(tree.make("#(b 'c')"));
        tree[name]->appendChild(fragment);
        ASSERT_TRUE(tree[name]->hasChildNodes());
    }
    EXPECT_EQ(in_memory(tree.document), "<!DOCTYPE d []><a><!--x--><![CDATA[y]]><?p z?>&e;t</a>");
}

// The order of attributes is that of the tree, also after changes.
TEST(NodeWriter, AttributesAfterChanges) {
    const Parsed parsed(u"<!DOCTYPE a [<!ATTLIST a d CDATA '0'>]><a b='1' c='2'/>");
    qvox::Element* const element = parsed.document->getDocumentElement();
    element->removeAttribute("b");
    element->setAttribute("b", "<");
    element->setAttribute("c", "3");
    element->setAttribute("d", "4");
    element->removeAttribute("d");
    EXPECT_EQ(in_memory(parsed.document),
              "<!DOCTYPE a [<!ATTLIST a d CDATA \"0\">]><a c=\"3\" d=\"0\" b=\"&lt;\"/>");
}

TEST(NodeWriter, Indented) {
    const struct {
        const char* tree;
        const char* written;
    } cases[] = {
        {"", "\n"},
        {"a", "\n<a/>\n"},
        {"a('text')", "\n<a>text</a>\n"},
        {"?xml'version=\"1.0\"' !'c' a(b c(d('x') e) ?p'q')",
         "\n<?xml version=\"1.0\"?>\n<!--c-->\n<a>\n  <b/>\n  <c>\n    <d>x</d>\n    <e/>\n  </c>\n"
         "  <?p q?>\n</a>\n"},
        // Markup behind text stays on its line, and so does the end tag of an element that ends in
        // text.
        {"a('x' b 'y' c d)", "\n<a>x<b/>y<c/>\n  <d/>\n</a>\n"},
        {"a(b 'x') ", "\n<a>\n  <b/>x</a>\n"},
        {"a(b('x' c) d)", "\n<a>\n  <b>x<c/>\n  </b>\n  <d/>\n</a>\n"},
        {"a(='x' 'y' ='z')", "\n<a>\n  <![CDATA[x]]>y<![CDATA[z]]>\n</a>\n"},
        {"a(' \n ')", "\n<a> \r\n </a>\n"},
        {"a(!'x\ny')", "\n<a>\n  <!--x\r\ny-->\n</a>\n"},
        {"a(#())", "\n<a>\n</a>\n"},
        // References belong to the text around them.
        {"a(b('x' &e 'y') c)", "\n<a>\n  <b>x&e;y</b>\n  <c/>\n</a>\n"},
        {"a(b(&e) c(&e &f 'x' &g) d(&e e))",
         "\n<a>\n  <b>&e;</b>\n  <c>&e;&f;x&g;</c>\n  <d>&e;<e/>\n  </d>\n</a>\n"},
        // Each of two texts side by side keeps a piece of markup on the line.
        {"a('x' 'y' b c d)", "\n<a>xy<b/><c/>\n  <d/>\n</a>\n"},
    };
    for (const auto& [tree, written] : cases) {
        const Tree made(tree);
        EXPECT_EQ(on_standard_output(made.document), written) << tree;
    }
}

TEST(NodeWriter, IndentedDeclarations) {
    const Parsed parsed(
        u"<?xml version='1.0'?><!DOCTYPE a PUBLIC 'p' 's' [<!ELEMENT a ANY><!ENTITY e 'x\ny'>]>"
        u"<a>\u3042\u00E9</a>");
    EXPECT_EQ(on_standard_output(parsed.document),
              "\n<?xml version=\"1.0\"?>\n<!DOCTYPE a PUBLIC \"p\" \"s\" [\n  <!ELEMENT a ANY>\n"
              "  <!ENTITY e \"x\r\ny\">\n]>\n<a>\x82\xA0?</a>\n");
    const Tree empty("%d a");
    EXPECT_EQ(on_standard_output(empty.document), "\n<!DOCTYPE d [\n]>\n<a/>\n");
}

// Depth costs no stack.
TEST(NodeWriter, AMillionLevels) {
    const Tree tree;
    qvox::Node* top = tree.document->createTextNode("x");
    for (int i = 0; i < 1000000; ++i) {
        qvox::Node* const parent = tree.document->createElement("a");
        parent->appendChild(top);
        top = parent;
    }
    tree.document->appendChild(top);
    const std::string bytes = in_file(tree.document, "EUC-JP");
    ASSERT_EQ(bytes.size(), 7000001U);
    EXPECT_EQ(bytes.substr(2999997, 8), "<a>x</a>");
    EXPECT_EQ(measured(tree.document), 14000004);
}

}  // namespace
}  // namespace qvox_test

// The form of each node, in memory and, indented, on standard output.
#include <gtest/gtest.h>

#include "support/tables.h"
#include "support/tree_text.h"
#include "writer/written.h"

namespace qvox_test {
namespace {

TEST(NodeWriter, Forms) {
    const char* const table = R"~(
<a b='say "x", it&apos;s > &#38; <'/> => <a b="say &quot;x&quot;, it&apos;s &gt; &amp; &lt;"/>
<a>it's "x" > y &lt;&amp;</a> => <a>it&apos;s &quot;x&quot; &gt; y &lt;&amp;</a>
<a>x<![CDATA[a<b&"']]>y<![CDATA[]]></a> => same
<a><!-- <&'"> --><?p <&'"> ?></a> => same
<a><?p?><?q ?></a> => <a><?p ?><?q ?></a>
<a></a> => <a/>
<p:a xmlns:p="u" p:b="1" xmlns="v"><c xmlns=""/></p:a> => same
<!--a--><?b c?><d> <e/>\n</d><!--f--><?g h?> => same
<!DOCTYPE r PUBLIC "p" "s"><r/> => <!DOCTYPE r PUBLIC "p" "s" []><r/>
<!DOCTYPE r SYSTEM 's'><r/> => <!DOCTYPE r SYSTEM "s" []><r/>
<!DOCTYPE r [ <!-- c --><?p d?>\n]><r/> => <!DOCTYPE r []><r/>
<!DOCTYPE r [<!ENTITY % p "x"><!ENTITY e SYSTEM "f" NDATA n><!ENTITY f PUBLIC "p" "s"><!NOTATION n
  PUBLIC "p"><!NOTATION m SYSTEM "s"><!NOTATION l PUBLIC "p" "s">]><r/> => same
<!DOCTYPE r [<!ENTITY g "<i>&#38;amp;'</i>">]><r>&g;y</r>
  => <!DOCTYPE r [<!ENTITY g "<i>&amp;'</i>">]><r><i>&amp;&apos;</i>y</r>
<!DOCTYPE r [<!ELEMENT a ( b , c )* ><!ELEMENT b EMPTY>]><r/>
  => <!DOCTYPE r [<!ELEMENT a (b,c)*><!ELEMENT b EMPTY>]><r/>
<!DOCTYPE r [<!ATTLIST a x (p | q) #IMPLIED y CDATA '1' z CDATA #FIXED '2'>]><r/>
  => <!DOCTYPE r [<!ATTLIST a x (p|q) #IMPLIED y CDATA "1" z CDATA #FIXED "2">]><r/>
# A second list of an element has the first one's attributes too.
<!DOCTYPE r [<!ATTLIST r a CDATA '1'><!ATTLIST r b CDATA '2'>]><r c='3'/> => <!DOCTYPE r [<!ATTLIST r
  a CDATA "1"><!ATTLIST r a CDATA "1" b CDATA "2">]><r c="3" a="1" b="2"/>
# Made by hand.
a(&e('not') 'x' &f #('y' b(#()) #('z'))) => <a>&e;x&f;y<b></b>z</a>
a[b=-](!- =- ?p- c(-)) => <a b=""><!----><![CDATA[]]><?p ?><c></c></a>
%d(!'c' b ?p'd') a b => <!DOCTYPE d []><a/><b/>
a(']]>') => <a>]]&gt;</a>
)~";
    for (const Row& row : rows_of(table)) {
        const Tree tree(row[0]);
        EXPECT_EQ(in_memory(tree.document), row.at(1) == "same" ? row[0] : row[1]);
    }
    EXPECT_EQ(in_memory(Tree().document), "");
    // A fragment gets its children under nodes that accept none by themselves.
    Tree tree("%d a(!'x' ='y' ?p'z' &e 't')");
    for (const char* const name : {"d", "x", "y", "z", "e", "t"}) {
        tree[name]->appendChild(tree.drop(tree.make("#(b 'c')")));
        ASSERT_TRUE(tree[name]->hasChildNodes());
    }
    EXPECT_EQ(in_memory(tree.document), "<!DOCTYPE d []><a><!--x--><![CDATA[y]]><?p z?>&e;t</a>");
}

TEST(NodeWriter, Indented) {
    // Markup behind text stays on its line, and so does the end tag of an element that ends in
    // text. References belong to the text around them, and each of two texts side by side keeps a
    // piece of markup on the line.
    const char* const table = R"~(
a => <a/>\n
?xml'version="1.0"' !'c' a(b c(d('x') e) ?p'q') => <?xml version="1.0"?>\n<!--c-->\n<a>\n\s <b/>\n\s
  <c>\n\s \s <d>x</d>\n\s \s <e/>\n\s </c>\n\s <?p q?>\n</a>\n
a('x' b 'y' c d) => <a>x<b/>y<c/>\n\s <d/>\n</a>\n
a(b 'x') => <a>\n\s <b/>x</a>\n
a(b('x' c) d) => <a>\n\s <b>x<c/>\n\s </b>\n\s <d/>\n</a>\n
a(='x' 'y' ='z') => <a>\n\s <![CDATA[x]]>y<![CDATA[z]]>\n</a>\n
a(!'x\ny' '\s\n\s') => <a>\n\s <!--x\r\ny--> \r\n </a>\n
a(#()) => <a>\n</a>\n
a(b('x' &e 'y') c) => <a>\n\s <b>x&e;y</b>\n\s <c/>\n</a>\n
a(c(&e &f 'x' &g) d(&e e)) => <a>\n\s <c>&e;&f;x&g;</c>\n\s <d>&e;<e/>\n\s </d>\n</a>\n
a('x' 'y' b c d) => <a>xy<b/><c/>\n\s <d/>\n</a>\n
%d a => <!DOCTYPE d [\n]>\n<a/>\n
<!DOCTYPE a PUBLIC 'p' 's' [<!ELEMENT a ANY><!ENTITY e 'x\ny'>]><a/> => <!DOCTYPE a PUBLIC "p" "s"
  [\n\s <!ELEMENT a ANY>\n\s <!ENTITY e "x\r\ny">\n]>\n<a/>\n
)~";
    for (const Row& row : rows_of(table)) {
        const Tree tree(row[0]);
        EXPECT_EQ(on_standard_output(tree.document), '\n' + unescaped(row.at(1))) << row[0];
    }
    EXPECT_EQ(on_standard_output(Tree().document), "\n");
    EXPECT_EQ(on_standard_output(Parsed(u"<a>\u3042\u00E9</a>").document), "\n<a>\x82\xA0?</a>\n");
}

// An attribute map takes every node that has a name.
TEST(NodeWriter, NodesAmongTheAttributes) {
    // Items, and what is written of <a x="1"><c/></a> with them, in memory and indented.
    for (const Row& row : rows_of(R"(
't<' => x="1"t&lt;><c/></a> => x="1"t&lt;>\n\s \s <c/></a>
='t<' !'-' => x="1"<![CDATA[t<]]><!----->><c/></a>
  => x="1"\n<![CDATA[t<]]>\n<!----->>\n\s <c/>\n</a>
?p'd' &e => x="1"<?p d?>&e;><c/></a> => x="1"\n<?p d?>&e;>\n\s \s <c/></a>
b[y='2']('z' d) e => x="1"<b y="2">z<d/></b><e/>><c/></a>
  => x="1"\n<b y="2">z<d/>\n</b>\n<e/>>\n\s <c/>\n</a>
#(!'u' d) %t => x="1"<!--u--><d/><!DOCTYPE t []>><c/></a>
  => x="1"\n<!--u-->\n<d/>\n<!DOCTYPE t [\n]>>\n\s <c/>\n</a>
)")) {
        Tree tree("a[x='1'](c)");
        const qvox::Node* const items = tree.drop(tree.make(("a(" + row[0] + ")").c_str()));
        while (qvox::Node* const item = items->getFirstChild()) {
            tree["a"]->getAttributes()->setNamedItem(item);
        }
        EXPECT_EQ(in_memory(tree.document), "<a " + row[1]);
        EXPECT_EQ(on_standard_output(tree.document), "\n<a " + unescaped(row.at(2)) + "\n");
    }
    const Parsed parsed(
        u"<!DOCTYPE a [<!ENTITY e SYSTEM 's'><!NOTATION n PUBLIC 'p'>]><a x='1'><b y='2'/></a>");
    const qvox::DocumentType* const type = parsed.document->getDoctype();
    qvox::Element* const a = parsed.document->getDocumentElement();
    a->getAttributes()->setNamedItem(type->getEntities()->item(0));
    a->setAttribute("z", "3");
    a->getFirstChild()->getAttributes()->setNamedItem(type->getNotations()->item(0));
    EXPECT_EQ(in_memory(parsed.document),
              "<!DOCTYPE a [<!ENTITY e SYSTEM \"s\"><!NOTATION n PUBLIC \"p\">]>"
              "<a x=\"1\"<!ENTITY e SYSTEM \"s\"> z=\"3\"><b y=\"2\"<!NOTATION n PUBLIC "
              "\"p\">/></a>");
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

// Nodes in places where no document has them: an attribute map takes every node that has a name.
#include "support/script.h"
#include "writer/written.h"

namespace qvox_test {
namespace {

TEST(OddNodes, AmongTheAttributes) {
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
        qvox::NamedNodeMap* const map = tree["a"]->getAttributes();
        for (const std::string& item : split(row[0], ' ')) {
            map->setNamedItem(tree.make(item.c_str()));
        }
        EXPECT_EQ(in_memory(tree.document), "<a " + row[1]);
        EXPECT_EQ(on_standard_output(tree.document), "\n<a " + unescaped(row.at(2)) + "\n");
    }
}

TEST(OddNodes, BetweenAttributes) {
    const Parsed parsed(
        u"<!DOCTYPE a [<!ENTITY e SYSTEM 's'><!NOTATION n PUBLIC 'p'>]><a x='1'><b y='2'/></a>");
    const qvox::DocumentType* const type = parsed.document->getDoctype();
    qvox::Element* const a = parsed.document->getDocumentElement();
    qvox::Node* const b = a->getFirstChild();
    a->getAttributes()->setNamedItem(type->getEntities()->item(0));
    a->setAttribute("z", "3");
    b->getAttributes()->setNamedItem(type->getNotations()->item(0));
    a->getAttributes()->setNamedItem(b);
    EXPECT_EQ(in_memory(parsed.document),
              "<!DOCTYPE a [<!ENTITY e SYSTEM \"s\"><!NOTATION n PUBLIC \"p\">]>"
              "<a x=\"1\"<!ENTITY e SYSTEM \"s\"> z=\"3\"<b y=\"2\"<!NOTATION n PUBLIC \"p\">/>/>");
}

// Levels of this kind cost no stack either.
TEST(OddNodes, MapsInsideEachOther) {
    constexpr int LEVELS = 500000;
    const Tree tree;
    qvox::Node* top = tree.document->createElement("b");
    for (int i = 0; i < LEVELS; ++i) {
        qvox::Element* const around = tree.document->createElement("a");
        around->setAttribute("x", "");
        around->getAttributes()->setNamedItem(top);
        top = around;
    }
    tree.document->appendChild(top);
    const std::string bytes = in_file(tree.document, "EUC-JP");
    ASSERT_EQ(bytes.size(), LEVELS * 9U + 4);
    EXPECT_EQ(bytes.substr(LEVELS * 7U - 7, 15), "<a x=\"\"<b/>/>/>");
}

}  // namespace
}  // namespace qvox_test

// Documents: factories, look-ups, import; the document type and the implementation.
#include "support/script.h"

namespace qvox_test {
namespace {

using qvox::Document;
using qvox::Node;

TEST(DomDocument, Factories) {
    for (const Row& row : cells_of(R"(
createAttribute NAME => DOM 5 invalid attribute name => @NAME=-*
createAttributeNS u NAME => DOM 5 invalid attribute name => @{u}NAME=-*
createElement NAME => DOM 5 invalid element name => NAME
createElementNS u NAME => DOM 5 invalid element name => {u}NAME
createEntityReference NAME => DOM 5 invalid entity name => &NAME
createProcessingInstruction NAME d => DOM 5 invalid processing instruction target name => ?NAME'd'
)",
                                   3)) {
        const auto with = [](const std::string& text, const std::string& name) {
            return replaced(text, "NAME", name);
        };
        Script script("");
        for (const char* const bad : {"1", "-a", "'a b'", "' '", "a>", "\xB1\x31\x7F"}) {
            EXPECT_EQ(script.run("/ " + with(row[0], bad)), row[1]) << bad;
        }
        EXPECT_EQ(script.run("/ " + with(row[0], "p:a")), with(row[2], "p:a"));
        for (const char* const none : {"''", "-"}) {
            EXPECT_EQ(script.run("/ " + with(row[0], none)), with(row[2], ""));
        }
        script.run("n: / " + with(row[0], "\x93\xFA\x96{"));
        EXPECT_EQ(quoted(script.node("n")->getNodeName()), "'日本'");
        EXPECT_EQ(script.run("n getParentNode") + script.run("n getOwnerDocument"), "null/");
    }
}

TEST(DomDocument, HtmlRefusals) {
    for (const Row& row : cells_of(R"(
html => html  HTML => html  !'c' hTmL a => html  {u}html => html  => free  htm => free
html5 => free  a(html) => free  a html => free  p:html => free  ?html'd' a => free  %html a => free
)")) {
        Script script(row[0]);
        const bool isHtml = row[1] == "html";
        const std::string refusal = "DOM 9 html document can't create ";
        EXPECT_EQ(script.run("/ createCDATASection x"),
                  isHtml ? refusal + "CDATA Section" : "='x'");
        EXPECT_EQ(script.run("/ createProcessingInstruction t x"),
                  isHtml ? refusal + "Processing Instruction" : "?t'x'");
        EXPECT_EQ(script.run("/ createProcessingInstruction 1 x"),
                  "DOM 5 invalid processing instruction target name");
    }
}

TEST(DomDocument, LookUps) {
    expect_each("!'c'", R"(
/ getDoctype => null  / getDocumentElement => null
/ getElementById x => DOM 9 TreeWalker root is null
/ /getElementsByTagName x => DOM 9 TreeWalker root is null
/ /getElementsByTagNameNS x y => DOM 9 TreeWalker root is null
)");
    expect_each("%d a %e b", R"(
/ getDoctype => %d  / getDocumentElement => a  / getOwnerDocument => null
)");
    // The type of an attribute goes along with a copy.
    Script ids(
        "<!DOCTYPE t [<!ATTLIST a i ID #IMPLIED j ID 'k'><!ATTLIST b i CDATA ''>]>"
        "<r><b i='x'/><c><a n='1' i='x'/></c><a n='2' i='x' j='y'/><a n='3' i='X'/>"
        "<d id='z'/></r>",
        "w");
    expect_steps(ids, R"(
/ getElementById x => a[n='1' i='x' j='k'*]  / getElementById k => a[n='1' i='x' j='k'*]
/ getElementById X => a[n='3' i='X' j='k'*]  / getElementById z => null  / getElementById '' => null
/ getElementById xx => null  y: / getElementById y => a[n='2' i='x' j='y']
i: // importNode y true; w appendChild i; // getElementById x => a[n='2' i='x' j='y']
)");
}

TEST(DomDocument, ImportOfOtherTypes) {
    expect_steps("b", "%d a[x='1']", R"(
/ importNode null true => DOM 9 TreeWalker root is null
/ importNode // true => DOM 9 a document can't be imported
/ importNode d true => DOM 9 a document type can't be imported
a@x setValue 2 => > /(b)/(%d a[x='2'('2')])  x: / importNode a@x true => @x='2'('2')
x getOwnerElement => null  x getOwnerDocument => /
)");
    // A declared default, and that it stands, go with a copy.
    Script defaults("b", "<!DOCTYPE t [<!ATTLIST a d CDATA 'def'>]><a b='1'/>");
    expect_steps(defaults, R"(
i: / importNode a true => a[b='1' d='def'*]  c: a cloneNode false => a[b='1' d='def'*]
)");
    for (const std::string copy : {"i", "c"}) {
        EXPECT_EQ(
            defaults.run(copy + "@d setValue own; " + copy + " removeNamedItem d").substr(0, 15),
            "@d='def'('def')");
    }
}

TEST(Implementation, Features) {
    Tree tree;
    for (const Row& row : cells_of("XML => 1.0  Html => 1.0  CORE => 2.0  traversal => 2.0  "
                                   "RANGE => 2.0  Events =>  XM =>  XMLs =>")) {
        const char* const feature = row[0].c_str();
        for (const char* const asked : {"", "1.0", "2.0", "2", "2.00"}) {
            EXPECT_EQ(tree.parser.getImplementation()->hasFeature(feature, asked),
                      asked[0] != '\0' && row[1] == asked);
        }
        EXPECT_EQ(tree.document->isSupported(feature, {}), !row[1].empty());
    }
    for (const char* const none : {"", static_cast<const char*>(nullptr)}) {
        EXPECT_FALSE(tree.document->isSupported(none, {}));
    }
}

TEST(Implementation, CreateDocument) {
    // A document type that is in use moves. No name is looked at but the root's.
    Script script("");
    expect_steps(script, R"(
type: / createDocumentType '1 bad' '' - => %1 bad
/ createDocument u 1 type => DOM 5 invalid element name  type getParentNode => null
one: / createDocument u p:a type => /(%1 bad {u}p:a) > /  one getDoctype => %1 bad
type getOwnerDocument => null  two: / createDocument - - type => /(%1 bad ) > / + /({u}p:a)  one => /({u}p:a)
type isSupported Core 2.0 => true
)");
    const auto& type = dynamic_cast<qvox::DocumentType&>(*script.node("type"));
    EXPECT_EQ(quoted(type.getName()) + quoted(type.getPublicId()) + quoted(type.getSystemId()),
              "'1 bad'''-");
    EXPECT_TRUE(type.getEntities() == nullptr && type.getNotations() == nullptr);
    Tree tree;
    auto& instruction = dynamic_cast<qvox::ProcessingInstruction&>(*tree.drop(tree.make("?t'd'")));
    instruction.setData("new");
    EXPECT_EQ(quoted(instruction.getTarget()) + quoted(instruction.getData()), "'t''new'");
    tree.parser.getImplementation()->freeDocument(nullptr);
}

}  // namespace
}  // namespace qvox_test

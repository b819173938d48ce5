// Documents: factories, look-ups, import; the document type and the implementation.
#include <gtest/gtest.h>

#include "support/script.h"

namespace qvox_test {
namespace {

using qvox::Document;
using qvox::Node;

TEST(DomDocument, Factories) {
    const char* const attribute = "DOM 5 invalid attribute name";
    const char* const element = "DOM 5 invalid element name";
    const struct {
        std::string call;
        const char* behind;
        const char* refusal;
        const char* good;
        const char* null;
    } makers[] = {
        {"createAttribute ", "", attribute, "@p:a=-*", "@=-*"},
        {"createAttributeNS u ", "", attribute, "@{u}p:a=-*", "@{u}=-*"},
        {"createElement ", "", element, "p:a", ""},
        {"createElementNS u ", "", element, "{u}p:a", "{u}"},
        {"createEntityReference ", "", "DOM 5 invalid entity name", "&p:a", "&"},
        {"createProcessingInstruction ", " d", "DOM 5 invalid processing instruction target name",
         "?p:a'd'", "?'d'"},
    };
    for (const auto& [call, behind, refusal, good, null] : makers) {
        Script script("");
        const auto make = [&, &name = call, &end = behind](const std::string& word) {
            return script.run("n: / " + name + word + end);
        };
        for (const char* const bad : {"1", "-a", "'a b'", "' '", "a>", "\xB1\x31\x7F"}) {
            EXPECT_EQ(make(bad), refusal) << bad;
        }
        EXPECT_EQ(make("p:a"), good);
        EXPECT_EQ(make("''"), null);
        EXPECT_EQ(make("-"), null);
        EXPECT_EQ(script.run("n getParentNode") + script.run("n getOwnerDocument"), "null/");
        make("\x93\xFA\x96{");
        EXPECT_EQ(quoted(script.node("n")->getNodeName()), "'日本'");
    }
}

TEST(DomDocument, HtmlRefusals) {
    const std::string cdata = "DOM 9 html document can't create CDATA Section";
    const std::string instruction = "DOM 9 html document can't create Processing Instruction";
    const struct {
        const char* tree;
        bool html;
    } cases[] = {{"", false},       {"html", true},    {"HTML", true},        {"!'c' hTmL a", true},
                 {"htm", false},    {"html5", false},  {"a(html)", false},    {"a html", false},
                 {"p:html", false}, {"{u}html", true}, {"?html'd' a", false}, {"%html a", false}};
    for (const auto& [tree, html] : cases) {
        Script script(tree);
        EXPECT_EQ(script.run("/ createCDATASection x"), html ? cdata : "='x'") << tree;
        EXPECT_EQ(script.run("/ createProcessingInstruction t x"), html ? instruction : "?t'x'");
        EXPECT_EQ(script.run("/ createProcessingInstruction 1 x"),
                  "DOM 5 invalid processing instruction target name");
    }
}

TEST(DomDocument, LookUps) {
    const char* const noRoot = "DOM 9 TreeWalker root is null";
    Script script("!'c'");
    Document* const document = script.tree.document;
    expect_steps(script, {{"/ getDoctype", "null"},
                          {"/ getDocumentElement", "null"},
                          {"/ getElementById x", noRoot}});
    EXPECT_EQ(raised_by([&] { document->getElementsByTagName("x"); }), noRoot);
    EXPECT_EQ(raised_by([&] { document->getElementsByTagNameNS("x", "y"); }), noRoot);
    expect_steps(
        Script("%d a %e b"),
        {{"/ getDoctype", "%d"}, {"/ getDocumentElement", "a"}, {"/ getOwnerDocument", "null"}});
    EXPECT_EQ(document->getImplementation(), script.tree.parser.getImplementation());

    // The type of an attribute goes along with a copy.
    Script ids(
        "<!DOCTYPE t [<!ATTLIST a i ID #IMPLIED j ID 'k'><!ATTLIST b i CDATA ''>]>"
        "<r><b i='x'/><c><a n='1' i='x'/></c><a n='2' i='x' j='y'/><a n='3' i='X'/>"
        "<d id='z'/></r>",
        "w");
    expect_steps(ids, {{"/ getElementById x", "a[n='1' i='x' j='k'*]"},
                       {"/ getElementById k", "a[n='1' i='x' j='k'*]"},
                       {"/ getElementById X", "a[n='3' i='X' j='k'*]"},
                       {"/ getElementById z", "null"},
                       {"/ getElementById ''", "null"},
                       {"/ getElementById xx", "null"},
                       {"y: / getElementById y", "a[n='2' i='x' j='y']"},
                       {"i: // importNode y true; w appendChild i; // getElementById x",
                        "a[n='2' i='x' j='y']"}});
}

TEST(DomDocument, ImportOfOtherTypes) {
    expect_steps(Script("b", "%d a[x='1']"),
                 {{"/ importNode null true", "DOM 9 TreeWalker root is null"},
                  {"/ importNode // true", "DOM 9 a document can't be imported"},
                  {"/ importNode d true", "DOM 9 a document type can't be imported"},
                  {"a@x setValue 2", "> /(b)/(%d a[x='2'('2')])"},
                  {"x: / importNode a@x true", "@x='2'('2')"},
                  {"x getOwnerElement", "null"},
                  {"x getOwnerDocument", "/"}});
    // A declared default, and that it stands, go with a copy.
    Script defaults("b", "<!DOCTYPE t [<!ATTLIST a d CDATA 'def'>]><a b='1'/>");
    expect_steps(defaults, {{"i: / importNode a true", "a[b='1' d='def'*]"},
                            {"c: a cloneNode false", "a[b='1' d='def'*]"}});
    for (const std::string copy : {"i", "c"}) {
        EXPECT_EQ(
            defaults.run(copy + "@d setValue own; " + copy + " removeNamedItem d").substr(0, 15),
            "@d='def'('def')");
    }
}

TEST(Implementation, Features) {
    Tree tree;
    const char* const cases[][2] = {// the version besides null
                                    {"XML", "1.0"},       {"Html", "1.0"},    {"CORE", "2.0"},
                                    {"traversal", "2.0"}, {"RANGE", "2.0"},   {"Events", nullptr},
                                    {"", nullptr},        {nullptr, nullptr}, {"XM", nullptr},
                                    {"XML ", nullptr}};
    for (const auto& [feature, version] : cases) {
        for (const char* const asked : {"", "1.0", "2.0", "2", "2.00"}) {
            const bool has = version != nullptr && std::string(version) == asked;
            EXPECT_EQ(tree.parser.getImplementation()->hasFeature(feature, asked), has);
        }
        EXPECT_EQ(tree.document->isSupported(feature, {}), version != nullptr);
    }
}

TEST(Implementation, CreateDocument) {
    Tree tree;
    qvox::DOMImplementation* const implementation = tree.parser.getImplementation();
    qvox::DocumentType* const doctype = implementation->createDocumentType("1 bad", "", {});
    EXPECT_EQ(quoted(doctype->getName()) + quoted(doctype->getPublicId()) +
                  quoted(doctype->getSystemId()) + quoted(doctype->getInternalSubset()),
              "'1 bad'''--");
    EXPECT_EQ(doctype->getEntities(), nullptr);
    EXPECT_EQ(doctype->getNotations(), nullptr);
    EXPECT_TRUE(doctype->isSupported("Core", "2.0"));
    EXPECT_EQ(raised_by([&] { implementation->createDocument("u", "1", doctype); }),
              "DOM 5 invalid element name");
    EXPECT_EQ(doctype->getParentNode(), nullptr);
    Document* const document = implementation->createDocument("u", "p:a", doctype);
    EXPECT_EQ(tree_text(document), "/(%1 bad {u}p:a)");
    EXPECT_EQ(document->getDoctype(), doctype);
    EXPECT_EQ(doctype->getOwnerDocument(), nullptr);
    // A document type that is in use moves.
    Document* const second = implementation->createDocument({}, {}, doctype);
    EXPECT_EQ(tree_text(document) + tree_text(second), "/({u}p:a)/(%1 bad )");
    for (Document* const made : {document, second, static_cast<Document*>(nullptr)}) {
        implementation->freeDocument(made);
    }
    auto* const instruction =
        static_cast<qvox::ProcessingInstruction*>(tree.drop(tree.make("?t'd'")));
    instruction->setData("new");
    EXPECT_EQ(quoted(instruction->getTarget()) + quoted(instruction->getData()), "'t''new'");
}

}  // namespace
}  // namespace qvox_test

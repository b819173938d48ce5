// Documents: factories, lookups, import; the document type and the implementation.
#include <gtest/gtest.h>

#include "support/tree_text.h"

namespace qvox_test {
namespace {

using qvox::Document;
using qvox::Element;
using qvox::Node;
using qvox::Xstring;

const char* const noRoot = "DOM 9 TreeWalker root is null";

TEST(DomDocument, Factories) {
    enum class Make { Attribute, AttributeNS, Element, ElementNS, Reference, Instruction };
    const std::string attribute = "DOM 5 invalid attribute name";
    const std::string element = "DOM 5 invalid element name";
    const std::string target = "DOM 5 invalid processing instruction target name";
    const struct {
        Make make;
        std::string refusal;
        const char* good;
        const char* null;
    } makers[] = {
        {Make::Attribute, attribute, "@p:a=-*", "@=-*"},
        {Make::AttributeNS, attribute, "@{u}p:a=-*", "@{u}=-*"},
        {Make::Element, element, "p:a", ""},
        {Make::ElementNS, element, "{u}p:a", "{u}"},
        {Make::Reference, "DOM 5 invalid entity name", "&p:a", "&"},
        {Make::Instruction, target, "?p:a'd'", "?'d'"},
    };
    for (const auto& maker : makers) {
        Tree tree;
        const auto make = [&](const Xstring& name) -> Node* {
            switch (maker.make) {
                case Make::Attribute: return tree.document->createAttribute(name);
                case Make::AttributeNS: return tree.document->createAttributeNS("u", name);
                case Make::Element: return tree.document->createElement(name);
                case Make::ElementNS: return tree.document->createElementNS("u", name);
                case Make::Reference: return tree.document->createEntityReference(name);
                case Make::Instruction: break;
            }
            return tree.document->createProcessingInstruction(name, "d");
        };
        for (const char* const bad : {"1", "-a", "a b", " ", "a>",
                                      "\xB1"
                                      "1\x7F"}) {
            EXPECT_EQ(raised_by([&] { make(bad); }), maker.refusal) << bad;
        }
        EXPECT_EQ(tree_text(tree.drop(make("p:a"))), maker.good);
        EXPECT_EQ(tree_text(tree.drop(make(""))), maker.null);
        const Node* const node = tree.drop(make({}));
        EXPECT_EQ(tree_text(node), maker.null);
        EXPECT_EQ(node->getParentNode(), nullptr);
        EXPECT_EQ(node->getOwnerDocument(), tree.document);
        EXPECT_EQ(quoted(tree.drop(make("\x93\xFA\x96{"))->getNodeName()), "'日本'");
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
    for (const auto& test : cases) {
        Tree tree(test.tree);
        EXPECT_EQ(raised_by([&] { tree.drop(tree.document->createCDATASection("")); }),
                  test.html ? cdata : "")
            << test.tree;
        EXPECT_EQ(
            raised_by([&] { tree.drop(tree.document->createProcessingInstruction("t", "")); }),
            test.html ? instruction : "")
            << test.tree;
        EXPECT_EQ(raised_by([&] { tree.document->createProcessingInstruction("1", "x"); }),
                  "DOM 5 invalid processing instruction target name");
        tree.drop(tree.document->createEntityReference("e"));
    }
}

TEST(DomDocument, Lookups) {
    Tree tree("!'c'");
    Document* const document = tree.document;
    EXPECT_EQ(document->getDoctype(), nullptr);
    EXPECT_EQ(document->getDocumentElement(), nullptr);
    EXPECT_EQ(raised_by([&] { document->getElementById("x"); }), noRoot);
    EXPECT_EQ(raised_by([&] { document->getElementsByTagName("x"); }), noRoot);
    EXPECT_EQ(raised_by([&] { document->getElementsByTagNameNS("x", "y"); }), noRoot);
    for (const char* const text : {"%d", "a", "%e", "b"}) document->appendChild(tree.make(text));
    EXPECT_EQ(document->getDoctype(), tree["d"]);
    EXPECT_EQ(document->getDocumentElement(), tree["a"]);
    EXPECT_EQ(document->getImplementation(), tree.parser.getImplementation());
    EXPECT_EQ(document->getOwnerDocument(), nullptr);
}

TEST(DomDocument, GetElementById) {
    qvox::DOMParser parser;
    Document* const document =
        parse_document(parser,
                       "<!DOCTYPE r [<!ATTLIST a i ID #IMPLIED j ID 'k'><!ATTLIST b i CDATA ''>]>"
                       "<r><b i='x'/><c><a n='1' i='x'/></c><a n='2' i='x' j='y'/><a n='3' "
                       "i='X'/><d id='z'/></r>");
    const char* const cases[][2] = {{"x", "'1'"}, {"y", "'2'"}, {"k", "'1'"}, {"X", "'3'"}};
    for (const auto& test : cases) {
        const Element* const found = document->getElementById(test[0]);
        EXPECT_EQ(found == nullptr ? "none" : quoted(found->getAttribute("n")), test[1]) << test[0];
    }
    for (const char* const absent : {"z", "", "xx"}) {
        EXPECT_EQ(document->getElementById(absent), nullptr) << absent;
    }
    // The type goes along with a copy.
    Tree target("t");
    Element* const root = target.document->getDocumentElement();
    root->appendChild(target.document->importNode(document->getElementById("y"), true));
    EXPECT_EQ(target.document->getElementById("x"), root->getFirstChild());
    parser.free(document);
}

TEST(DomDocument, ImportNode) {
    const char* const cases[][2] = {
        {"{u}p:a[x='1' {v}q:y=''](b[z='2'] 't' !'c' =- ?p- &r(c) -)", "{u}p:a[x='1' {v}q:y='']"},
        {"'t'", "'t'"},
        {"='c'", "='c'"},
        {"&r(a)", "&r"},
        {"?p'd'", "?p'd'"},
        {"!'c'", "!'c'"},
        {"#(a 't')", "#"},
    };
    for (const auto& test : cases) {
        Tree target;
        Node* deep;
        {
            Tree source("r");
            Node* const node = source.drop(source.make(test[0]));
            Node* const flat = target.drop(target.document->importNode(node, false));
            EXPECT_EQ(tree_text(flat), test[1]);
            deep = target.drop(target.document->importNode(node, true));
            EXPECT_EQ(tree_text(node), test[0]);
            EXPECT_EQ(node->getOwnerDocument(), source.document);
        }
        // Nothing is shared with the source, which is gone.
        EXPECT_EQ(tree_text(deep), test[0]);
        EXPECT_EQ(deep->getParentNode(), nullptr);
        for (const Node* node = deep; node != nullptr; node = node->getFirstChild()) {
            EXPECT_EQ(node->getOwnerDocument(), target.document);
            if (!node->hasAttributes()) continue;
            const Node* const attribute = node->getAttributes()->item(0);
            EXPECT_EQ(attribute->getOwnerDocument(), target.document);
            EXPECT_EQ(static_cast<const qvox::Attr*>(attribute)->getOwnerElement(), node);
        }
    }
}

TEST(DomDocument, ImportOfOtherTypes) {
    Tree target;
    Tree source("%d a[x='1']");
    EXPECT_EQ(raised_by([&] { target.document->importNode(nullptr, true); }), noRoot);
    for (Node* const refused : {static_cast<Node*>(source.document), source["d"]}) {
        EXPECT_EQ(raised_by([&] { target.document->importNode(refused, true); }).substr(0, 6),
                  "DOM 9 ");
    }
    qvox::Attr* const x = source.element("a")->getAttributeNode("x");
    x->setValue("2");
    auto* const copy = static_cast<qvox::Attr*>(target.drop(target.document->importNode(x, true)));
    EXPECT_EQ(quoted(copy->getValue()), "'2'");
    EXPECT_EQ(copy->getOwnerElement(), nullptr);
    EXPECT_EQ(copy->getOwnerDocument(), target.document);
    EXPECT_EQ(tree_text(x), "@x='2'('2')");
    for (const int type : {Node::ENTITY_NODE, Node::NOTATION_NODE}) {
        const Node* const node = target.drop(source.make_type(type));
        EXPECT_EQ(tree_text(node), type == Node::ENTITY_NODE ? "$e" : "~n");
        target.drop(target.document->importNode(source.drop(source.make_type(type)), true));
    }
}

TEST(DomDocument, SpecifiedGoesWithACopy) {
    qvox::DOMParser parser;
    Document* const document =
        parse_document(parser, "<!DOCTYPE a [<!ATTLIST a d CDATA 'def'>]><a b='1'/>");
    const std::string text = "a[b='1' d='def'*]";
    Tree target;
    Node* const import =
        target.drop(target.document->importNode(document->getDocumentElement(), true));
    Node* const clone = document->getDocumentElement()->cloneNode(false);
    EXPECT_EQ(tree_text(import) + tree_text(clone), text + text);
    // So does the default.
    for (Node* const copy : {import, clone}) {
        auto* const d = static_cast<Element*>(copy)->getAttributeNode("d");
        d->setValue("own");
        EXPECT_EQ(copy->getAttributes()->removeNamedItem("d"), d);
        EXPECT_EQ(tree_text(d), "@d='def'('def')");
    }
    parser.freeNode(clone);
    parser.free(document);
}

TEST(Implementation, Features) {
    Tree tree;
    const struct {
        const char* feature;
        const char* version;  // besides null
    } cases[] = {{"XML", "1.0"},  {"xml", "1.0"},       {"Html", "1.0"},  {"CORE", "2.0"},
                 {"core", "2.0"}, {"traversal", "2.0"}, {"RANGE", "2.0"}, {"Events", nullptr},
                 {"", nullptr},   {nullptr, nullptr},   {"XM", nullptr},  {"XML ", nullptr}};
    for (const auto& test : cases) {
        for (const char* const version : {"", "1.0", "2.0", "2", "2.00"}) {
            const bool has = test.version != nullptr && std::string(test.version) == version;
            EXPECT_EQ(tree.parser.getImplementation()->hasFeature(test.feature, version), has)
                << test.feature << ' ' << version;
        }
        EXPECT_EQ(tree.document->isSupported(test.feature, {}), test.version != nullptr);
    }
}

TEST(Implementation, CreateDocument) {
    Tree tree;
    qvox::DOMImplementation* const implementation = tree.parser.getImplementation();
    qvox::DocumentType* const doctype = implementation->createDocumentType("1 bad", "p", "");
    EXPECT_EQ(doctype->getOwnerDocument(), nullptr);
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
    implementation->freeDocument(document);
    implementation->freeDocument(second);
    implementation->freeDocument(nullptr);
}

TEST(DocumentType, Properties) {
    Tree tree;
    qvox::DocumentType* const doctype =
        tree.drop(tree.parser.getImplementation()->createDocumentType("d", "", {}));
    EXPECT_EQ(quoted(doctype->getName()) + quoted(doctype->getPublicId()) +
                  quoted(doctype->getSystemId()) + quoted(doctype->getInternalSubset()),
              "'d'''--");
    EXPECT_EQ(doctype->getEntities(), nullptr);
    EXPECT_EQ(doctype->getNotations(), nullptr);
    EXPECT_EQ(doctype->getAttributes(), nullptr);
    auto* const instruction =
        static_cast<qvox::ProcessingInstruction*>(tree.drop(tree.make("?t'd'")));
    instruction->setData("new");
    EXPECT_EQ(tree_text(instruction), "?t'new'");
    EXPECT_EQ(quoted(instruction->getTarget()) + quoted(instruction->getData()), "'t''new'");
}

}  // namespace
}  // namespace qvox_test

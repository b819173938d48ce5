// Elements and attributes.
#include <gtest/gtest.h>

#include "support/tree_text.h"

namespace qvox_test {
namespace {

using qvox::Attr;
using qvox::Element;
using qvox::Node;
using qvox::Xstring;

const char* const badName = "DOM 5 invalid attribute name";
const char* const badLocalName = "DOM 5 invalid attribute local name";

std::string name_parts(const Node* node) {
    return quoted(node->getNodeName()) + ' ' + quoted(node->getNamespaceURI()) + ' ' +
           quoted(node->getPrefix()) + ' ' + quoted(node->getLocalName());
}

TEST(Element, NameParts) {
    const struct {
        const char* uri;
        const char* name;
        const char* parts;
        const char* renamed;  // after setPrefix("q")
    } cases[] = {
        {"u", "p:a", "'p:a' 'u' 'p' 'a'", "'q:a' 'u' 'q' 'a'"},
        {"u", "a", "'a' 'u' '' 'a'", "'q:a' 'u' 'q' 'a'"},
        {"", "a", "'a' '' '' 'a'", "'q:a' '' 'q' 'a'"},
        {"u", "p:a:b", "'p:a:b' 'u' 'p' 'a:b'", "'q:a:b' 'u' 'q' 'a:b'"},
        {"u", ":a", "':a' 'u' '' 'a'", "'q:a' 'u' 'q' 'a'"},
        {"u", "p:", "'p:' 'u' 'p' ''", "'q:' 'u' 'q' ''"},
        {"u", "", "'' 'u' '' ''", "'q:' 'u' 'q' ''"},
        {nullptr, "p:a", "'p:a' - - -", "DOM 14 namespaceURI is null"},
    };
    for (const auto& test : cases) {
        Tree tree;
        Element* const element = tree.drop(tree.document->createElementNS(test.uri, test.name));
        Attr* const attribute = tree.drop(tree.document->createAttributeNS(test.uri, test.name));
        EXPECT_EQ(quoted(element->getTagName()) + quoted(attribute->getName()),
                  quoted(test.name) + quoted(test.name));
        for (Node* const node : {static_cast<Node*>(element), static_cast<Node*>(attribute)}) {
            EXPECT_EQ(name_parts(node), test.parts);
            const std::string raised = raised_by([&] { node->setPrefix("q"); });
            EXPECT_EQ(raised.empty() ? name_parts(node) : raised, test.renamed);
            if (!raised.empty()) continue;
            node->setPrefix({});
            EXPECT_EQ(name_parts(node).substr(0, 2), "':");
        }
    }
    // As long as memory allows.
    Tree tree;
    const std::string prefix(5000, 'p');
    Node* const node = tree.drop(tree.document->createElementNS("u", (prefix + ":a").c_str()));
    EXPECT_EQ(plain(node->getPrefix()), prefix);
    EXPECT_EQ(quoted(node->getLocalName()), "'a'");
    node->setPrefix((prefix + prefix).c_str());
    EXPECT_EQ(node->getPrefix().length(), 10000);
}

TEST(Element, ReadingAttributes) {
    Tree tree("a[x='1' {u}p:y='2'] b");
    const Element* const a = tree.element("a");
    EXPECT_EQ(quoted(a->getAttribute("x")) + quoted(a->getAttribute("p:y")), "'1''2'");
    EXPECT_EQ(quoted(a->getAttributeNS("u", "y")) + quoted(a->getAttributeNS({}, "x")), "'2'-");
    EXPECT_TRUE(a->getAttribute("y").isNull());
    EXPECT_TRUE(a->getAttribute("not a name").isNull());
    EXPECT_TRUE(a->hasAttribute("p:y") && a->hasAttributeNS("u", "y") && a->hasAttributes());
    EXPECT_FALSE(a->hasAttribute("y") || a->hasAttributeNS("u", "p:y"));
    EXPECT_EQ(a->getAttributeNode("p:y"), a->getAttributeNodeNS("u", "y"));
    EXPECT_EQ(a->getAttributeNode("p:y")->getOwnerElement(), a);
    EXPECT_EQ(a->getAttributeNode("y"), nullptr);
    EXPECT_FALSE(tree.element("b")->hasAttributes() || tree.element("b")->hasAttribute("x"));
    EXPECT_EQ(tree.element("b")->getAttributeNodeNS("u", "y"), nullptr);
}

enum class Call { Set, SetNS, Remove, RemoveNS };

// One after the other, on one element.
TEST(Element, WritingAttributes) {
    const struct {
        Call call;
        const char* uri;
        const char* name;
        const char* value;
        const char* result;
    } steps[] = {
        {Call::Remove, nullptr, "x", nullptr, "a"},
        {Call::RemoveNS, "u", "x", nullptr, "a"},
        {Call::Set, nullptr, "", "1", "a"},
        {Call::Set, nullptr, nullptr, "1", "a"},
        {Call::SetNS, nullptr, "y", "1", "a"},
        {Call::SetNS, nullptr, "p:y", "1", "a"},
        {Call::SetNS, "u", "", "1", "a"},
        {Call::Set, nullptr, "x", "1", "a[x='1']"},
        {Call::Set, nullptr, "x", "2", "a[x='2'('2')]"},
        {Call::SetNS, "u", "p:y", "1", "a[x='2'('2') {u}p:y='1']"},
        {Call::SetNS, "u", "q:y", "2", "a[x='2'('2') {u}p:y='2'('2')]"},
        {Call::SetNS, "v", "p:y", "3", "a[x='2'('2') {v}p:y='3']"},
        {Call::Set, nullptr, "p:y", nullptr, "a[x='2'('2') {v}p:y=''('')]"},
        {Call::SetNS, "", "z", nullptr, "a[x='2'('2') {v}p:y=''('') {}z=-]"},
        // A null URI is as an empty one in the lookup.
        {Call::SetNS, nullptr, "z", "4", "a[x='2'('2') {v}p:y=''('') {}z='4'('4')]"},
        {Call::RemoveNS, nullptr, "z", nullptr, "a[x='2'('2') {v}p:y=''('')]"},
        {Call::SetNS, nullptr, "", "5", "a[x='5'('5') {v}p:y=''('')]"},
        {Call::Remove, nullptr, "p:y", nullptr, "a[x='5'('5')]"},
        {Call::RemoveNS, nullptr, nullptr, nullptr, "a"},
        {Call::Set, nullptr, "1a", "1", badName},
        {Call::SetNS, "u", "p:a b", "1", badName},
        {Call::SetNS, nullptr, "<", "1", badName},
        {Call::Remove, nullptr, "-", nullptr, badName},
        {Call::RemoveNS, "u", "1", nullptr, badLocalName},
        {Call::SetNS, "u", "p::y", "1", "a[{u}p::y='1']"},
        {Call::SetNS, "u", "xmlns", "1", "a[{u}p::y='1' {u}xmlns='1']"},
    };
    Tree tree("a");
    Element* const a = tree.element("a");
    for (const auto& step : steps) {
        const std::string raised = raised_by([&] {
            switch (step.call) {
                case Call::Set: return a->setAttribute(step.name, step.value);
                case Call::SetNS: return a->setAttributeNS(step.uri, step.name, step.value);
                case Call::Remove: return a->removeAttribute(step.name);
                case Call::RemoveNS: return a->removeAttributeNS(step.uri, step.name);
            }
        });
        EXPECT_EQ(raised.empty() ? tree_text(a) : raised, step.result) << &step - steps;
    }
}

TEST(Element, AttributeNodes) {
    Tree tree("a[x='1' {u}p:y='2'] b[x='3']");
    Element* const a = tree.element("a");
    Element* const b = tree.element("b");
    const char* const inUse = "DOM 10 attribute is already used by other element";
    Attr* const x = a->getAttributeNode("x");
    EXPECT_EQ(raised_by([&] { b->setAttributeNode(x); }), inUse);
    EXPECT_EQ(raised_by([&] { b->setAttributeNodeNS(x); }), inUse);
    EXPECT_EQ(tree.text(), "/(a[x='1' {u}p:y='2'] b[x='3'])");

    // Its own attribute again goes to the end.
    EXPECT_EQ(a->setAttributeNode(x), x);
    EXPECT_EQ(tree_text(a), "a[{u}p:y='2' x='1']");
    // What is taken out is found by the names, and is free for another element then.
    Attr* const named = tree.drop(tree.document->createAttribute("x"));
    EXPECT_EQ(a->removeAttributeNode(named), x);
    EXPECT_EQ(x->getOwnerElement(), nullptr);
    EXPECT_EQ(a->removeAttributeNode(named), nullptr);
    Attr* const third = tree.drop(b->setAttributeNode(x));
    EXPECT_EQ(tree_text(third), "@x='3'");
    EXPECT_EQ(third->getOwnerElement(), nullptr);
    EXPECT_EQ(x->getOwnerElement(), b);
    EXPECT_EQ(tree.text(), "/(a[{u}p:y='2'] b[x='1'])");

    EXPECT_EQ(b->setAttributeNodeNS(named), nullptr);
    EXPECT_EQ(named->getOwnerElement(), nullptr);
    Attr* const y = tree.drop(tree.document->createAttributeNS("u", "p:y"));
    Attr* const sameLocalName = tree.drop(tree.document->createAttributeNS("u", "y"));
    EXPECT_EQ(tree_text(tree.drop(a->setAttributeNodeNS(y))), "@{u}p:y='2'");
    EXPECT_EQ(a->setAttributeNodeNS(sameLocalName), nullptr);
    EXPECT_EQ(tree_text(a), "a[{u}p:y=-* {u}y=-*]");
    EXPECT_EQ(tree.drop(a->removeAttributeNode(sameLocalName)), y);
    EXPECT_EQ(tree_text(a), "a[{u}y=-*]");
    Tree other("c");
    Attr* const foreign = other.drop(other.document->createAttribute("z"));
    EXPECT_EQ(a->setAttributeNode(foreign), nullptr);
    EXPECT_EQ(foreign->getOwnerDocument(), other.document);
    EXPECT_EQ(a->removeAttributeNode(foreign), foreign);
    // A new prefix is a new name in the map too.
    a->getAttributeNode("y")->setPrefix("q");
    EXPECT_TRUE(a->hasAttribute("q:y") && !a->hasAttribute("y"));
}

TEST(Attr, Values) {
    Tree tree("a[x='1']");
    Attr* const parsed = tree.element("a")->getAttributeNode("x");
    EXPECT_EQ(parsed->getFirstChild(), nullptr);
    Attr* const attribute = tree.drop(tree.document->createAttribute("x"));
    EXPECT_EQ(tree_text(attribute), "@x=-*");
    attribute->setNodeValue("2");
    EXPECT_EQ(tree_text(attribute), "@x='2'*");
    attribute->setValue("3");
    EXPECT_EQ(tree_text(attribute), "@x='3'('3')");
    Node* const text = attribute->getFirstChild();
    EXPECT_EQ(text->getParentNode(), attribute);
    attribute->setNodeValue("4");
    EXPECT_EQ(tree_text(attribute), "@x='4'('3')");
    attribute->appendChild(tree.make("'more'"));
    attribute->setValue("5");
    EXPECT_EQ(tree_text(attribute), "@x='5'('5' 'more')");
    EXPECT_EQ(attribute->getFirstChild(), text);
    EXPECT_EQ(attribute->getParentNode(), nullptr);
    EXPECT_EQ(attribute->getNextSibling(), nullptr);
    // A first child that holds no text can't take the value.
    Attr* const reference = tree.drop(tree.document->createAttribute("r"));
    reference->appendChild(tree.make("&e('t')"));
    reference->setValue("6");
    EXPECT_EQ(quoted(reference->getValue()), "'6'");
    EXPECT_TRUE(reference->getSpecified());
}

TEST(Element, TagNameSearches) {
    Tree tree("r({u}p:a({u}q:b a) &e(a(b)) b(!'a' {v}p:a(#(a) 't') {u}a({}b)) '')");
    const struct {
        const char* name;
        const char* result;
    } byName[] = {
        {"*", "p:a q:b a b p:a a b"},
        {"a", "a a"},
        {"p:a", "p:a p:a"},
        {"r", ""},
        {"A", ""},
        {"", ""},
    };
    const auto names = [](const qvox::NodeList* list) {
        std::string out;
        for (int i = 0; i < list->getLength(); ++i)
            out += ' ' + plain(list->item(i)->getNodeName());
        return out.substr(out.empty() ? 0 : 1);
    };
    Element* const root = tree.element("r");
    for (const auto& test : byName) {
        EXPECT_EQ(names(root->getElementsByTagName(test.name)), test.result) << test.name;
    }
    const char* const byNamespace[][3] = {{"*", "*", "p:a q:b p:a a b"},
                                          {"u", "*", "p:a q:b a"},
                                          {"*", "a", "p:a p:a a"},
                                          {"u", "a", "p:a a"},
                                          {"", "*", "b"},
                                          {nullptr, "b", "b"},
                                          {"u", "p:a", ""},
                                          {"*", "", ""},
                                          {"w", "*", ""}};
    for (const auto& test : byNamespace) {
        EXPECT_EQ(names(root->getElementsByTagNameNS(test[0], test[1])), test[2]) << test[2];
        EXPECT_EQ(names(tree.document->getElementsByTagNameNS(test[0], test[1])), test[2]);
    }
    // A document's search begins with its element, and stays below it.
    EXPECT_EQ(names(tree.document->getElementsByTagName("*")), "r p:a q:b a b p:a a b");
    tree.document->appendChild(tree.make("r(b)"));
    EXPECT_EQ(names(tree.document->getElementsByTagName("r")), "r");
    EXPECT_EQ(names(tree.element("q:b")->getElementsByTagName("*")), "");
}

}  // namespace
}  // namespace qvox_test

// Lists and maps.
#include <gtest/gtest.h>

#include "support/tree_text.h"

namespace qvox_test {
namespace {

using qvox::NamedNodeMap;
using qvox::Node;
using qvox::NodeList;
using qvox::Xstring;

const char* const notResult = "QVOX 4 attempt to free NodeList that is not tmp-node-list";

TEST(Collection, ChildLists) {
    Tree tree("a(b 't' c)");
    const NodeList* const list = tree["a"]->getChildNodes();
    EXPECT_EQ(items_text(*list), "b 't' c");
    EXPECT_EQ(list->item(1), tree["t"]);
    for (const int outside : {-1, 3, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(list->item(outside), nullptr);
    }
    tree["a"]->insertBefore(tree.make("d"), tree["t"]);
    tree.drop(tree["a"]->removeChild(tree["c"]));
    EXPECT_EQ(items_text(*list), "b d 't'");
    EXPECT_EQ(tree["a"]->getChildNodes(), list);

    const NodeList* const none = tree["b"]->getChildNodes();
    EXPECT_EQ(none->getLength(), 0);
    EXPECT_EQ(none->item(0), nullptr);
    EXPECT_EQ(tree["t"]->getChildNodes(), none);
    tree.drop(tree["b"]->appendChild(tree.make("e")));
    EXPECT_EQ(none->getLength(), 0);
    EXPECT_EQ(items_text(*tree["b"]->getChildNodes()), "e");
}

TEST(Collection, ResultLists) {
    Tree tree("a(b(c b) c)");
    NodeList* const list = tree.element("a")->getElementsByTagName("b");
    EXPECT_EQ(items_text(*list), "b(c b) b");
    // A snapshot; the next search on the node fills the same list, a search elsewhere another one.
    tree["a"]->appendChild(tree.make("b"));
    EXPECT_EQ(list->getLength(), 2);
    EXPECT_EQ(tree.element("a")->getElementsByTagNameNS("*", "*"), list);
    EXPECT_EQ(list->getLength(), 0);
    NodeList* const whole = tree.document->getElementsByTagName("c");
    EXPECT_NE(whole, list);
    EXPECT_EQ(tree.element("a")->getElementsByTagName("b"), list);
    EXPECT_EQ(items_text(*list) + " : " + items_text(*whole), "b(c b) b b : c c");
    tree.parser.free(list);
    EXPECT_EQ(tree.document->getElementsByTagName("a"), whole);
    EXPECT_EQ(items_text(*whole), "a(b(c b) c b)");
    EXPECT_EQ(items_text(*tree.element("a")->getElementsByTagName("c")), "c c");
}

TEST(Collection, FreeingOtherListsIsRefused) {
    Tree tree("a(b c)");
    tree.element("a")->getElementsByTagName("b");
    tree.document->getElementsByTagName("b");
    for (Node* const node : {tree["a"], tree["b"], static_cast<Node*>(tree.document)}) {
        EXPECT_EQ(raised_by([&] { tree.parser.free(node->getChildNodes()); }), notResult);
    }
    EXPECT_EQ(tree.text(), "/(a(b c))");
}

// The list outlives the node that was searched, and isn't taken for that of the next node there.
TEST(Collection, ResultListOfAFreedNode) {
    Tree tree("a(b(c))");
    NodeList* const list = tree.element("b")->getElementsByTagName("c");
    tree.parser.freeNode(tree["a"]->removeChild(tree["b"]));
    EXPECT_LE(list->getLength(), 1);
    for (int i = 0; i < 100; ++i) {
        tree["a"]->appendChild(tree.make("b(d)"));
        NodeList* const other =
            static_cast<qvox::Element*>(tree["a"]->getLastChild())->getElementsByTagName("d");
        EXPECT_EQ(items_text(*other), "d");
        EXPECT_NE(other, list);
    }
    EXPECT_LE(list->getLength(), 1);
    tree.parser.free(list);
}

TEST(Collection, MapLookups) {
    Tree tree("a[x='1' {u}p:y='2' {v}q:y='3' {}y='4' z='5'](b)");
    const NamedNodeMap* const map = tree["a"]->getAttributes();
    EXPECT_EQ(map->getLength(), 5);
    EXPECT_EQ(tree_text(map->item(1)), "@{u}p:y='2'");
    EXPECT_EQ(map->item(-1), nullptr);
    EXPECT_EQ(map->item(5), nullptr);
    const char* const byName[][2] = {{"x", "@x='1'"},  {"q:y", "@{v}q:y='3'"}, {"y", "@{}y='4'"},
                                     {"X", "null"},    {"p", "null"},          {"", "null"},
                                     {nullptr, "null"}};
    for (const auto& test : byName) EXPECT_EQ(tree_text(map->getNamedItem(test[0])), test[1]);
    // Null and empty are one here: an item without namespace has an empty URI and local name.
    const char* const byNamespace[][3] = {
        {"u", "y", "@{u}p:y='2'"}, {"v", "y", "@{v}q:y='3'"},    {"u", "p:y", "null"},
        {"w", "y", "null"},        {"U", "y", "null"},           {"", "y", "@{}y='4'"},
        {nullptr, "x", "null"},    {nullptr, nullptr, "@x='1'"}, {"", "", "@x='1'"},
        {"u", nullptr, "null"},    {nullptr, "y", "@{}y='4'"}};
    for (const auto& test : byNamespace) {
        EXPECT_EQ(tree_text(map->getNamedItemNS(test[0], test[1])), test[2]) << test[2];
    }
}

TEST(Collection, MapChanges) {
    Tree tree("a[x='1' {u}p:y='2' z='3'](b[w='4'] c)");
    NamedNodeMap* const map = tree["a"]->getAttributes();
    const auto attribute = [&](const Xstring& uri, const Xstring& name) {
        return tree.drop(uri.isNull() ? tree.document->createAttribute(name)
                                      : tree.document->createAttributeNS(uri, name));
    };
    const auto state = [&] { return attributes_text(*map); };

    // By name in both forms; what is replaced moves to the end.
    EXPECT_EQ(tree_text(map->setNamedItem(attribute({}, "v"))), "null");
    EXPECT_EQ(tree_text(tree.drop(map->setNamedItem(attribute({}, "x")))), "@x='1'");
    EXPECT_EQ(state(), "[{u}p:y='2' z='3' v=-* x=-*]");
    EXPECT_EQ(tree_text(map->setNamedItemNS(attribute("u", "r:y"))), "null");
    EXPECT_EQ(tree_text(tree.drop(map->setNamedItemNS(attribute("k", "p:y")))), "@{u}p:y='2'");
    EXPECT_EQ(state(), "[z='3' v=-* x=-* {u}r:y=-* {k}p:y=-*]");
    EXPECT_EQ(tree_text(tree.drop(map->setNamedItem(attribute({}, "p:y")))), "@{k}p:y=-*");
    EXPECT_EQ(state(), "[z='3' v=-* x=-* {u}r:y=-* p:y=-*]");
    // Not taken.
    EXPECT_EQ(map->setNamedItemNS(attribute({}, "n")), nullptr);
    EXPECT_EQ(map->setNamedItem(attribute({}, "")), nullptr);
    EXPECT_EQ(map->setNamedItemNS(attribute("u", "")), nullptr);
    EXPECT_EQ(map->setNamedItemNS(tree["b"]->getAttributes()->item(0)), nullptr);
    EXPECT_EQ(tree_text(tree["b"]), "b[w='4']");
    EXPECT_EQ(state(), "[z='3' v=-* x=-* {u}r:y=-* p:y=-*]");
    // The same again: it goes out and comes back at the end.
    Node* const z = map->item(0);
    EXPECT_EQ(map->setNamedItem(z), z);
    EXPECT_EQ(state(), "[v=-* x=-* {u}r:y=-* p:y=-* z='3']");
    // Out of another map, and of another document.
    auto* const w = static_cast<qvox::Attr*>(tree["b"]->getAttributes()->item(0));
    EXPECT_EQ(map->setNamedItem(w), nullptr);
    EXPECT_EQ(w->getOwnerElement(), tree["a"]);
    EXPECT_FALSE(tree["b"]->hasAttributes());
    Tree other("o[{u}s:t='7']");
    EXPECT_EQ(map->setNamedItemNS(other["o"]->getAttributes()->item(0)), nullptr);
    EXPECT_EQ(other.text(), "/(o)");
    EXPECT_EQ(state(), "[v=-* x=-* {u}r:y=-* p:y=-* z='3' w='4' {u}s:t='7']");

    EXPECT_EQ(tree.drop(map->removeNamedItem("w")), w);
    EXPECT_EQ(w->getOwnerElement(), nullptr);
    EXPECT_EQ(tree_text(tree.drop(map->removeNamedItemNS("u", "y"))), "@{u}r:y=-*");
    EXPECT_EQ(tree_text(other.drop(map->removeNamedItemNS("u", "t"))), "@{u}s:t='7'");
    EXPECT_EQ(tree_text(tree.drop(map->removeNamedItemNS({}, ""))), "@v=-*");
    EXPECT_EQ(state(), "[x=-* p:y=-* z='3']");
    const char* const missing = "DOM 8 named node not found";
    EXPECT_EQ(raised_by([&] { map->removeNamedItem("q"); }), missing);
    EXPECT_EQ(raised_by([&] { map->removeNamedItemNS("u", "z"); }), missing);
}

TEST(Collection, EmptyMapOfAllElements) {
    Tree tree("a(b)");
    NamedNodeMap* const map = tree["a"]->getAttributes();
    EXPECT_EQ(map, tree["b"]->getAttributes());
    Node* const attribute = tree.drop(tree.make_type(Node::ATTRIBUTE_NODE));
    EXPECT_EQ(raised_by([&] { map->setNamedItem(attribute); }).substr(0, 6), "DOM 9 ");
    EXPECT_EQ(raised_by([&] { map->setNamedItemNS(attribute); }).substr(0, 6), "DOM 9 ");
    EXPECT_EQ(raised_by([&] { map->removeNamedItem("x"); }), "DOM 8 named node not found");
    EXPECT_EQ(raised_by([&] { map->removeNamedItemNS({}, {}); }), "DOM 8 named node not found");
    EXPECT_EQ(map->getLength(), 0);
    EXPECT_EQ(map->item(0), nullptr);
    tree.element("a")->setAttribute("x", "1");
    EXPECT_NE(tree["a"]->getAttributes(), map);
    EXPECT_EQ(map->getLength(), 0);
}

TEST(Collection, DeclaredDefaultsStay) {
    qvox::DOMParser parser;
    qvox::Document* const document = parse_document(
        parser, "<!DOCTYPE a [<!ATTLIST a d CDATA 'def' n:e CDATA 'ns'>]><a xmlns:n='u' d='own'/>");
    qvox::Element* const a = document->getDocumentElement();
    NamedNodeMap* const map = a->getAttributes();
    const auto state = [&] { return attributes_text(*map); };
    const std::string before = state();
    Node* const d = map->getNamedItem("d");
    EXPECT_EQ(map->removeNamedItem("d"), d);
    EXPECT_EQ(tree_text(d), "@d='def'('def')");
    auto* const e = static_cast<qvox::Attr*>(map->getNamedItemNS("u", "e"));
    EXPECT_FALSE(e->getSpecified());
    EXPECT_EQ(map->removeNamedItemNS("u", "e"), e);
    EXPECT_TRUE(e->getSpecified());
    a->setAttribute("d", "again");
    a->removeAttribute("d");
    EXPECT_EQ(tree_text(d), "@d='def'('def')");
    EXPECT_EQ(a->removeAttributeNode(static_cast<qvox::Attr*>(d)), d);
    a->setAttributeNS("u", "m:e", "mine");
    EXPECT_EQ(tree_text(e), "@{u}n:e='mine'('mine')");
    a->removeAttributeNS("u", "e");
    EXPECT_EQ(tree_text(e), "@{u}n:e='ns'('ns')");
    EXPECT_EQ(map->getLength(), 3) << before;
    parser.free(document);
}

}  // namespace
}  // namespace qvox_test

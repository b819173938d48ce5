// Elements, attributes, and the lists and maps of nodes.
#include <gtest/gtest.h>

#include "support/script.h"

namespace qvox_test {
namespace {

using qvox::Attr;
using qvox::Element;
using qvox::NamedNodeMap;
using qvox::Node;
using qvox::NodeList;

TEST(Element, NameParts) {
    const struct {
        const char* uri;
        const char* name;
        const char* parts;
        const char* renamed;  // after setPrefix("q")
    } cases[] = {{"u", "p:a", "'p:a' 'u' 'p' 'a'", "'q:a' 'u' 'q' 'a'"},
                 {"u", "a", "'a' 'u' '' 'a'", "'q:a' 'u' 'q' 'a'"},
                 {"", "a", "'a' '' '' 'a'", "'q:a' '' 'q' 'a'"},
                 {"u", "p:a:b", "'p:a:b' 'u' 'p' 'a:b'", "'q:a:b' 'u' 'q' 'a:b'"},
                 {"u", "p:", "'p:' 'u' 'p' ''", "'q:' 'u' 'q' ''"},
                 {"u", "", "'' 'u' '' ''", "'q:' 'u' 'q' ''"},
                 {nullptr, "p:a", "'p:a' - - -", "DOM 14 namespaceURI is null"}};
    for (const auto& [uri, name, parts, renamed] : cases) {
        Tree tree;
        Element* const element = tree.drop(tree.document->createElementNS(uri, name));
        Attr* const attribute = tree.drop(tree.document->createAttributeNS(uri, name));
        EXPECT_EQ(quoted(element->getTagName()) + quoted(attribute->getName()),
                  quoted(name) + quoted(name));
        for (Node* const node : {static_cast<Node*>(element), static_cast<Node*>(attribute)}) {
            EXPECT_EQ(names_of(*node), parts);
            const std::string raised = raised_by([&] { node->setPrefix("q"); });
            EXPECT_EQ(raised.empty() ? names_of(*node) : raised, renamed);
            if (!raised.empty()) continue;
            node->setPrefix({});
            EXPECT_EQ(names_of(*node).substr(0, 2), "':");
        }
    }
    // As long as memory allows.
    Tree tree;
    const std::string prefix(5000, 'p');
    Node* const node = tree.drop(tree.document->createElementNS("u", (prefix + ":a").c_str()));
    EXPECT_EQ(plain(node->getPrefix()), prefix);
    node->setPrefix((prefix + prefix).c_str());
    EXPECT_EQ(node->getPrefix().length(), 10000);
}

TEST(Element, ReadingAttributes) {
    // Null and empty are one in a look-up: an item without namespace has an empty URI and local
    // name there.
    expect_each("a[x='1' {u}p:y='2' {v}q:y='3' {}y='4' z='5'](b)",
                {{"a getAttribute x", "'1'"},
                 {"a getAttribute 'not a name'", "-"},
                 {"a getAttributeNS u y", "'2'"},
                 {"a getAttributeNS u p:y", "-"},
                 {"a getAttributeNode q:y", "@{v}q:y='3'"},
                 {"a getAttributeNode X", "null"},
                 {"a@p:y getOwnerElement", "a[x='1' {u}p:y='2' {v}q:y='3' {}y='4' z='5'](b)"},
                 {"a hasAttribute p:y", "true"},
                 {"a hasAttributeNS u y", "true"},
                 {"a hasAttributes", "true"},
                 {"b getAttributeNodeNS u y", "null"},
                 {"a getNamedItem y", "@{}y='4'"},
                 {"a getNamedItemNS v y", "@{v}q:y='3'"},
                 {"a getNamedItemNS '' y", "@{}y='4'"},
                 {"a getNamedItemNS - y", "@{}y='4'"},
                 {"a getNamedItemNS - -", "@x='1'"},
                 {"a getNamedItemNS u -", "null"}});
    Tree tree("a[x='1' {u}p:y='2']");
    const NamedNodeMap* const map = tree["a"]->getAttributes();
    EXPECT_EQ(items_text(*map) + tree_text(map->item(-1)) + tree_text(map->item(2)),
              "@x='1' @{u}p:y='2'nullnull");
}

TEST(Element, WritingAttributes) {
    const char* const badName = "DOM 5 invalid attribute name";
    expect_steps(Script("a"),
                 {{"a removeAttribute x", ""},
                  {"a removeAttributeNS u x", ""},
                  {"a setAttribute - 1", ""},
                  {"a setAttributeNS - p:y 1", ""},
                  {"a setAttributeNS u '' 1", ""},
                  {"a setAttribute x 1", "> /(a[x='1'])"},
                  {"a setAttribute x 2", "> /(a[x='2'('2')])"},
                  {"a setAttributeNS u p:y 1", "> /(a[x='2'('2') {u}p:y='1'])"},
                  {"a setAttributeNS u q:y 2", "> /(a[x='2'('2') {u}p:y='2'('2')])"},
                  {"a setAttributeNS v p:y 3", "> /(a[x='2'('2') {v}p:y='3'])"},
                  {"a setAttribute p:y -", "> /(a[x='2'('2') {v}p:y=''('')])"},
                  {"a setAttributeNS '' z -", "> /(a[x='2'('2') {v}p:y=''('') {}z=-])"},
                  // A null URI is as an empty one in the look-up.
                  {"a setAttributeNS - z 4", "> /(a[x='2'('2') {v}p:y=''('') {}z='4'('4')])"},
                  {"a removeAttributeNS - z", "> /(a[x='2'('2') {v}p:y=''('')])"},
                  {"a setAttributeNS - '' 5", "> /(a[x='5'('5') {v}p:y=''('')])"},
                  {"a removeAttribute p:y", "> /(a[x='5'('5')])"},
                  {"a removeAttributeNS - -", "> /(a)"},
                  {"a setAttribute 1a 1", badName},
                  {"a setAttributeNS u 'p:a b' 1", badName},
                  {"a setAttributeNS - < 1", badName},
                  {"a removeAttribute '-'", badName},
                  {"a removeAttributeNS u 1", "DOM 5 invalid attribute local name"},
                  {"a setAttributeNS u p::y 1", "> /(a[{u}p::y='1'])"},
                  {"a setAttributeNS u xmlns 1", "> /(a[{u}p::y='1' {u}xmlns='1'])"}});
}

// Its own attribute again goes to the end. What is taken out is found by the names, and is free for
// another element then.
TEST(Element, AttributeNodes) {
    const char* const inUse = "DOM 10 attribute is already used by other element";
    expect_steps(
        Script("a[x='1' {u}p:y='2'] b[x='3']", "c"),
        {{"b setAttributeNode a@x", inUse},
         {"b setAttributeNodeNS a@x", inUse},
         {"x: a setAttributeNode a@x", "@x='1' > /(a[{u}p:y='2' x='1'] b[x='3'])/(c)"},
         {"named: / createAttribute x; a removeAttributeNode named",
          "@x='1' > /(a[{u}p:y='2'] b[x='3'])/(c) + @x='1' + @x=-*"},
         {"x getOwnerElement", "null"},
         {"a removeAttributeNode named", "null"},
         {"third: b setAttributeNode x", "@x='3' > /(a[{u}p:y='2'] b[x='1'])/(c) + @x=-*"},
         {"third getOwnerElement", "null"},
         {"x getOwnerElement", "b[x='1']"},
         {"b setAttributeNodeNS named", "null"},
         {"y: / createAttributeNS u p:y; a setAttributeNodeNS y",
          "@{u}p:y='2' > /(a[{u}p:y=-*] b[x='1'])/(c) + @x=-* + @x='3'"},
         {"same: / createAttributeNS u y; a setAttributeNodeNS same",
          "null > /(a[{u}p:y=-* {u}y=-*] b[x='1'])/(c) + @x=-* + @x='3' + @{u}p:y='2'"},
         {"a removeAttributeNode same",
          "@{u}p:y=-* > /(a[{u}y=-*] b[x='1'])/(c) + @x=-* + @x='3' + @{u}p:y=-* + @{u}p:y='2'"},
         {"foreign: // createAttribute z; a setAttributeNode foreign",
          "null > /(a[{u}y=-* z=-*] b[x='1'])/(c) + @x=-* + @x='3' + @{u}p:y=-* + @{u}p:y='2'"},
         {"foreign getOwnerDocument", "//"},
         // A new prefix is a new name in the map too.
         {"a@y setPrefix q; a hasAttribute q:y", "true"},
         {"a hasAttribute y", "false"}});
}

TEST(Attr, Values) {
    // A first child that holds no text can't take the value.
    expect_steps(Script("a[y='1']"), {{"x: / createAttribute x", "@x=-*"},
                                      {"a@y getFirstChild", "null"},
                                      {"x setNodeValue 2", "> /(a[y='1']) + @x='2'*"},
                                      {"x setValue 3", "> /(a[y='1']) + @x='3'('3')"},
                                      {"x setNodeValue 4", "> /(a[y='1']) + @x='4'('3')"},
                                      {"t: x getFirstChild; x appendChild +'more'; x setValue 5",
                                       "> /(a[y='1']) + @x='5'('5' 'more')"},
                                      {"t getParentNode", "@x='5'('5' 'more')"},
                                      {"a@y appendChild +&e('t'); a@y setValue 6",
                                       "> /(a[y='6'(&e('t'))]) + @x='5'('5' 'more')"}});
}

TEST(Element, TagNameSearches) {
    Tree tree("r({u}p:a({u}q:b a) &e(a(b)) b(!'a' {v}p:a(#(a) 't') {u}a({}b)) '')");
    const auto names = [](const NodeList* list) {
        std::string out;
        for (int i = 0; i < list->getLength(); ++i)
            out += ' ' + plain(list->item(i)->getNodeName());
        return out;
    };
    Element* const root = tree.element("r");
    const char* const byName[][2] = {{"*", " p:a q:b a b p:a a b"}, {"a", " a a"}, {"r", ""},
                                     {"p:a", " p:a p:a"},           {"A", ""},     {"", ""}};
    for (const auto& [name, found] : byName) {
        EXPECT_EQ(names(root->getElementsByTagName(name)), found) << name;
    }
    const char* const byNamespace[][3] = {{"*", "*", " p:a q:b p:a a b"},
                                          {"u", "*", " p:a q:b a"},
                                          {"*", "a", " p:a p:a a"},
                                          {"u", "a", " p:a a"},
                                          {"", "*", " b"},
                                          {nullptr, "b", " b"},
                                          {"u", "p:a", ""},
                                          {"*", "", ""},
                                          {"w", "*", ""}};
    for (const auto& [uri, name, found] : byNamespace) {
        EXPECT_EQ(names(root->getElementsByTagNameNS(uri, name)), found);
        EXPECT_EQ(names(tree.document->getElementsByTagNameNS(uri, name)), found);
    }
    // A document's search begins with its element, and stays below it.
    EXPECT_EQ(names(tree.document->getElementsByTagName("*")), " r p:a q:b a b p:a a b");
    tree.document->appendChild(tree.make("r(b)"));
    EXPECT_EQ(names(tree.document->getElementsByTagName("r")), " r");
    EXPECT_EQ(names(tree.element("q:b")->getElementsByTagName("*")), "");
}

TEST(Collection, ChildLists) {
    Tree tree("a(b 't' c)");
    const NodeList* const list = tree["a"]->getChildNodes();
    for (const int outside : {-1, 3, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(list->item(outside), nullptr);
    }
    tree["a"]->insertBefore(tree.make("d"), tree["t"]);
    tree.drop(tree["a"]->removeChild(tree["c"]));
    EXPECT_EQ(items_text(*list), "b d 't'");
    EXPECT_EQ(tree["a"]->getChildNodes(), list);
    const NodeList* const none = tree["b"]->getChildNodes();
    EXPECT_EQ(tree["t"]->getChildNodes(), none);
    tree["b"]->appendChild(tree.make("e"));
    EXPECT_EQ(items_text(*none) + tree_text(none->item(0)), "null");
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
    EXPECT_EQ(items_text(*tree.element("a")->getElementsByTagName("c")), "c c");
    for (Node* const node : {tree["a"], tree["c"], static_cast<Node*>(tree.document)}) {
        EXPECT_EQ(raised_by([&] { tree.parser.free(node->getChildNodes()); }),
                  "QVOX 4 attempt to free NodeList that is not tmp-node-list");
    }
    EXPECT_EQ(tree.text(), "/(a(b(c b) c b))");
}

// The list outlives the node that was searched, and isn't taken for that of the next node there.
TEST(Collection, ResultListOfAFreedNode) {
    Tree tree("a(b(c))");
    NodeList* const list = tree.element("b")->getElementsByTagName("c");
    tree.parser.freeNode(tree["a"]->removeChild(tree["b"]));
    for (int i = 0; i < 100; ++i) {
        Node* const next = tree["a"]->appendChild(tree.make("b(d)"));
        NodeList* const other = static_cast<Element*>(next)->getElementsByTagName("d");
        EXPECT_EQ(items_text(*other), "d");
        EXPECT_NE(other, list);
    }
    EXPECT_LE(list->getLength(), 1);
    tree.parser.free(list);
}

// By name in both forms; what is replaced moves to the end, and so does the same again.
TEST(Collection, MapChanges) {
    expect_each("a[x='1' {u}p:y='2' z='3'](b[w='4'])",
                {{"n: / createAttribute v; a setNamedItem n",
                  "null > /(a[x='1' {u}p:y='2' z='3' v=-*](b[w='4']))"},
                 {"n: / createAttribute x; a setNamedItem n",
                  "@x='1' > /(a[{u}p:y='2' z='3' x=-*](b[w='4']))"},
                 {"n: / createAttribute p:y; a setNamedItem n",
                  "@{u}p:y='2' > /(a[x='1' z='3' p:y=-*](b[w='4']))"},
                 {"n: / createAttributeNS u r:y; a setNamedItemNS n",
                  "null > /(a[x='1' {u}p:y='2' z='3' {u}r:y=-*](b[w='4']))"},
                 {"n: / createAttributeNS k p:y; a setNamedItemNS n",
                  "@{u}p:y='2' > /(a[x='1' z='3' {k}p:y=-*](b[w='4']))"},
                 {"n: / createAttribute n; a setNamedItemNS n", "null"},
                 {"n: / createAttribute ''; a setNamedItem n", "null"},
                 {"n: / createAttributeNS u ''; a setNamedItemNS n", "null"},
                 {"a setNamedItemNS b@w", "null"},
                 {"a setNamedItem a@x", "@x='1' > /(a[{u}p:y='2' z='3' x='1'](b[w='4']))"},
                 {"a setNamedItem b@w", "null > /(a[x='1' {u}p:y='2' z='3' w='4'](b))"},
                 {"a setNamedItem b@w; a@w getOwnerElement", "a[x='1' {u}p:y='2' z='3' w='4'](b)"},
                 {"a removeNamedItem z", "@z='3' > /(a[x='1' {u}p:y='2'](b[w='4']))"},
                 {"a removeNamedItemNS u y", "@{u}p:y='2' > /(a[x='1' z='3'](b[w='4']))"},
                 {"a removeNamedItemNS - ''", "@x='1' > /(a[{u}p:y='2' z='3'](b[w='4']))"},
                 {"a removeNamedItem q", "DOM 8 named node not found"},
                 {"a removeNamedItemNS u z", "DOM 8 named node not found"}});
    expect_steps(Script("a[x='1']", "o[{u}s:t='7']"),
                 {{"a setNamedItemNS o@s:t", "null > /(a[x='1' {u}s:t='7'])/(o)"}});
}

TEST(Collection, EmptyMapOfAllElements) {
    const char* const missing = "DOM 8 named node not found";
    Script script("a(b)");
    const NamedNodeMap* const map = script.tree["a"]->getAttributes();
    EXPECT_EQ(map, script.tree["b"]->getAttributes());
    expect_steps(script, {{"x: / createAttribute x; a setNamedItem x",
                           "DOM 9 the empty map can't be changed"},
                          {"a setNamedItemNS x", "DOM 9 the empty map can't be changed"},
                          {"a removeNamedItem x", missing},
                          {"a removeNamedItemNS - -", missing},
                          {"a setAttribute x 1; a hasAttributes", "true"}});
    EXPECT_NE(script.tree["a"]->getAttributes(), map);
    EXPECT_EQ(map->getLength(), 0);
}

TEST(Collection, DeclaredDefaultsStay) {
    expect_steps(
        Script("<!DOCTYPE t [<!ATTLIST a d CDATA 'def' n:e CDATA 'ns'>]><a xmlns:n='u' d='own'/>"),
        {{"a removeNamedItem d",
          "@d='def'('def') > /(%t a[xmlns:n='u' d='def'('def') {u}n:e='ns'*])"},
         {"a removeNamedItemNS u e",
          "@{u}n:e='ns'('ns') > /(%t a[xmlns:n='u' d='def'('def') {u}n:e='ns'('ns')])"},
         {"a setAttribute d again; a removeAttribute d",
          "> /(%t a[xmlns:n='u' d='def'('def') {u}n:e='ns'('ns')])"},
         {"a setAttribute d again; a removeAttributeNode a@d",
          "@d='def'('def') > /(%t a[xmlns:n='u' d='def'('def') {u}n:e='ns'('ns')])"},
         {"a setAttributeNS u m:e mine",
          "> /(%t a[xmlns:n='u' d='def'('def') {u}n:e='mine'('mine')])"},
         {"a removeAttributeNS u e", "> /(%t a[xmlns:n='u' d='def'('def') {u}n:e='ns'('ns')])"}});
    // As attributes have it, also where no attribute has had it yet.
    expect_steps(Script("<!DOCTYPE t [<!ATTLIST a d NMTOKENS '  p   q '>]><a d='r'/>"),
                 {{"a removeAttribute d", "> /(%t a[d='p q'('p q')])"}});
}

}  // namespace
}  // namespace qvox_test

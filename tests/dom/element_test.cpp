// Elements, attributes, and the lists and maps of nodes.
#include "support/script.h"

namespace qvox_test {
namespace {

using qvox::Attr;
using qvox::Element;
using qvox::NamedNodeMap;
using qvox::Node;
using qvox::NodeList;

TEST(Element, NameParts) {
    // Of a name, and of it with the prefix q.
    for (const std::string kind : {"Element", "Attribute"}) {
        expect_cells(R"(
u p:a => 'p:a' 'u' 'p' 'a', 'q:a' 'u' 'q' 'a'  u a => 'a' 'u' '' 'a', 'q:a' 'u' 'q' 'a'
'' a => 'a' '' '' 'a', 'q:a' '' 'q' 'a'  u p:a:b => 'p:a:b' 'u' 'p' 'a:b', 'q:a:b' 'u' 'q' 'a:b'
u p: => 'p:' 'u' 'p' '', 'q:' 'u' 'q' ''  u '' => '' 'u' '' '', 'q:' 'u' 'q' ''
- p:a => 'p:a' - - -, 'p:a' - - -
)",
                     [&kind](const std::string& name) {
                         Script script("");
                         script.run("n: / create" + kind + "NS " + name);
                         const std::string names = script.run("n names");
                         return names + ", " + script.run("n setPrefix q; n names");
                     });
        Script script("");
        EXPECT_EQ(script.run("n: / create" + kind + "NS u p:a; n setPrefix -; n names"),
                  "':a' 'u' '' 'a'");
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
    expect_each("a[x='1' {u}p:y='2' {v}q:y='3' {}y='4' z='5'](b)", R"(
a getAttribute x => '1'  a getAttribute 'not a name' => -  a getAttributeNS u y => '2'
a getAttributeNS u p:y => -  a getAttributeNode q:y => @{v}q:y='3'  a getAttributeNode X => null
a@p:y getOwnerElement => a[x='1' {u}p:y='2' {v}q:y='3' {}y='4' z='5'](b)  a hasAttribute p:y => true
a hasAttributeNS u y => true  a hasAttributes => true  b getAttributeNodeNS u y => null
a getNamedItem y => @{}y='4'  a getNamedItemNS v y => @{v}q:y='3'  a getNamedItemNS '' y => @{}y='4'
a getNamedItemNS - y => @{}y='4'  a getNamedItemNS - - => @x='1'  a getNamedItemNS u - => null
)");
    Tree tree("a[x='1' {u}p:y='2']");
    const NamedNodeMap& map = *tree["a"]->getAttributes();
    for (const int outside : {-1, 2}) EXPECT_EQ(map.item(outside), nullptr);
}

TEST(Element, WritingAttributes) {
    expect_steps("a", R"(
a removeAttribute x =>  a removeAttributeNS u x =>  a setAttribute - 1 =>
a setAttributeNS - p:y 1 =>  a setAttributeNS u '' 1 =>  a setAttribute x 1 => > /(a[x='1'])
a setAttribute x 2 => > /(a[x='2'('2')])  a setAttributeNS u p:y 1 => > /(a[x='2'('2') {u}p:y='1'])
a setAttributeNS u q:y 2 => > /(a[x='2'('2') {u}p:y='2'('2')])
a setAttributeNS v p:y 3 => > /(a[x='2'('2') {v}p:y='3'])
a setAttribute p:y - => > /(a[x='2'('2') {v}p:y=''('')])
a setAttributeNS '' z - => > /(a[x='2'('2') {v}p:y=''('') {}z=-])
# A null URI is as an empty one in the look-up.
a setAttributeNS - z 4 => > /(a[x='2'('2') {v}p:y=''('') {}z='4'('4')])
a removeAttributeNS - z => > /(a[x='2'('2') {v}p:y=''('')])
a setAttributeNS - '' 5 => > /(a[x='5'('5') {v}p:y=''('')])
a removeAttribute p:y => > /(a[x='5'('5')])  a removeAttributeNS - - => > /(a)
a setAttribute 1a 1 => DOM 5 invalid attribute name
a setAttributeNS u 'p:a b' 1 => DOM 5 invalid attribute name
a setAttributeNS - < 1 => DOM 5 invalid attribute name
a removeAttribute '-' => DOM 5 invalid attribute name
a removeAttributeNS u 1 => DOM 5 invalid attribute local name
a setAttributeNS u p::y 1 => > /(a[{u}p::y='1'])
a setAttributeNS u xmlns 1 => > /(a[{u}p::y='1' {u}xmlns='1'])
)");
}

// Its own attribute again goes to the end. What is taken out is found by the names, and is free for
// another element then.
TEST(Element, AttributeNodes) {
    expect_steps("a[x='1' {u}p:y='2'] b[x='3']", "c", R"(
b setAttributeNode a@x => DOM 10 attribute is already used by other element
b setAttributeNodeNS a@x => DOM 10 attribute is already used by other element
x: a setAttributeNode a@x => @x='1' > /(a[{u}p:y='2' x='1'] b[x='3'])/(c)
named: / createAttribute x; a removeAttributeNode named => @x='1' > /(a[{u}p:y='2'] b[x='3'])/(c) +
  @x='1' + @x=-*
x getOwnerElement => null  a removeAttributeNode named => null
third: b setAttributeNode x => @x='3' > /(a[{u}p:y='2'] b[x='1'])/(c) + @x=-*
third getOwnerElement => null  x getOwnerElement => b[x='1']  b setAttributeNodeNS named => null
y: / createAttributeNS u p:y; a setAttributeNodeNS y => @{u}p:y='2' > /(a[{u}p:y=-*] b[x='1'])/(c) +
  @x=-* + @x='3'
same: / createAttributeNS u y; a setAttributeNodeNS same => null > /(a[{u}p:y=-* {u}y=-*]
  b[x='1'])/(c) + @x=-* + @x='3' + @{u}p:y='2'
a removeAttributeNode same => @{u}p:y=-* > /(a[{u}y=-*] b[x='1'])/(c) + @x=-* + @x='3' + @{u}p:y=-*
  + @{u}p:y='2'
foreign: // createAttribute z; a setAttributeNode foreign => null > /(a[{u}y=-* z=-*] b[x='1'])/(c)
  + @x=-* + @x='3' + @{u}p:y=-* + @{u}p:y='2'
foreign getOwnerDocument => //
# A new prefix is a new name in the map too.
a@y setPrefix q; a hasAttribute q:y => true  a hasAttribute y => false
)");
}

TEST(Attr, Values) {
    // A first child that holds no text can't take the value.
    expect_steps("a[y='1']", R"(
x: / createAttribute x => @x=-*  a@y getFirstChild => null
x setNodeValue 2 => > /(a[y='1']) + @x='2'*  x setValue 3 => > /(a[y='1']) + @x='3'('3')
x setNodeValue 4 => > /(a[y='1']) + @x='4'('3')
t: x getFirstChild; x appendChild +'more'; x setValue 5 => > /(a[y='1']) + @x='5'('5' 'more')
t getParentNode => @x='5'('5' 'more')
a@y appendChild +&e('t'); a@y setValue 6 => > /(a[y='6'(&e('t'))]) + @x='5'('5' 'more')
)");
}

TEST(Element, TagNameSearches) {
    // A document's search begins with its element, and stays below it.
    expect_each("r({u}p:a({u}q:b a) &e(a(b)) b(!'a' {v}p:a(#(a) 't') {u}c({}b)) '') r(d)", R"(
r getElementsByTagName b => b(!'a' {v}p:a(#(a) 't') {u}c({}b)) {}b
p:a getElementsByTagName * => {u}q:b a  r getElementsByTagName r =>  r getElementsByTagName A =>
r getElementsByTagName '' =>  r getElementsByTagName p:a => {u}p:a({u}q:b a) {v}p:a(#(a) 't')
r getElementsByTagNameNS * * => {u}p:a({u}q:b a) {u}q:b {v}p:a(#(a) 't') {u}c({}b) {}b
r getElementsByTagNameNS u * => {u}p:a({u}q:b a) {u}q:b {u}c({}b)
r getElementsByTagNameNS * a => {u}p:a({u}q:b a) {v}p:a(#(a) 't')
r getElementsByTagNameNS u c => {u}c({}b)  r getElementsByTagNameNS '' * => {}b
r getElementsByTagNameNS - b => {}b  r getElementsByTagNameNS u p:a =>
r getElementsByTagNameNS * '' =>  r getElementsByTagNameNS w * =>
/ /getElementsByTagNameNS u c => {u}c({}b)  / /getElementsByTagNameNS - b => {}b
/ /getElementsByTagName a => a  / /getElementsByTagName d =>
/ /getElementsByTagName r => r({u}p:a({u}q:b a) &e(a(b)) b(!'a' {v}p:a(#(a) 't') {u}c({}b)) '')
)");
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

// By name in both forms; what is replaced moves to the end, and so does the same again.
TEST(Collection, MapChanges) {
    expect_each("a[x='1' {u}p:y='2' z='3'](b[w='4'])", R"(
n: / createAttribute v; a setNamedItem n => null > /(a[x='1' {u}p:y='2' z='3' v=-*](b[w='4']))
n: / createAttribute x; a setNamedItem n => @x='1' > /(a[{u}p:y='2' z='3' x=-*](b[w='4']))
n: / createAttribute p:y; a setNamedItem n => @{u}p:y='2' > /(a[x='1' z='3' p:y=-*](b[w='4']))
n: / createAttributeNS u r:y; a setNamedItemNS n => null > /(a[x='1' {u}p:y='2' z='3'
  {u}r:y=-*](b[w='4']))
n: / createAttributeNS k p:y; a setNamedItemNS n => @{u}p:y='2' > /(a[x='1' z='3'
  {k}p:y=-*](b[w='4']))
n: / createAttribute n; a setNamedItemNS n => null
n: / createAttribute ''; a setNamedItem n => null
n: / createAttributeNS u ''; a setNamedItemNS n => null  a setNamedItemNS b@w => null
a setNamedItem a@x => @x='1' > /(a[{u}p:y='2' z='3' x='1'](b[w='4']))
a setNamedItem b@w => null > /(a[x='1' {u}p:y='2' z='3' w='4'](b))
a setNamedItem b@w; a@w getOwnerElement => a[x='1' {u}p:y='2' z='3' w='4'](b)
a removeNamedItem z => @z='3' > /(a[x='1' {u}p:y='2'](b[w='4']))
a removeNamedItemNS u y => @{u}p:y='2' > /(a[x='1' z='3'](b[w='4']))
a removeNamedItemNS - '' => @x='1' > /(a[{u}p:y='2' z='3'](b[w='4']))
a removeNamedItem q => DOM 8 named node not found
a removeNamedItemNS u z => DOM 8 named node not found
)");
    expect_steps("a[x='1']", "o[{u}s:t='7']", R"(
a setNamedItemNS o@s:t => null > /(a[x='1' {u}s:t='7'])/(o)
)");
}

TEST(Collection, EmptyMapOfAllElements) {
    Script script("a(b)");
    const NamedNodeMap* const map = script.tree["a"]->getAttributes();
    EXPECT_EQ(map, script.tree["b"]->getAttributes());
    expect_steps(script, R"(
x: / createAttribute x; a setNamedItem x => DOM 9 the empty map can't be changed
a setNamedItemNS x => DOM 9 the empty map can't be changed
a removeNamedItem x => DOM 8 named node not found
a removeNamedItemNS - - => DOM 8 named node not found  a setAttribute x 1; a hasAttributes => true
)");
    EXPECT_NE(script.tree["a"]->getAttributes(), map);
    EXPECT_EQ(map->getLength(), 0);
}

TEST(Collection, DeclaredDefaultsStay) {
    expect_steps("<!DOCTYPE t [<!ATTLIST a d CDATA 'def' n:e CDATA 'ns'>]><a xmlns:n='u' d='own'/>",
                 R"(
a removeNamedItem d => @d='def'('def') > /(%t a[xmlns:n='u' d='def'('def') {u}n:e='ns'*])
a removeNamedItemNS u e => @{u}n:e='ns'('ns') > /(%t a[xmlns:n='u' d='def'('def')
  {u}n:e='ns'('ns')])
a setAttribute d again; a removeAttribute d => > /(%t a[xmlns:n='u' d='def'('def')
  {u}n:e='ns'('ns')])
a setAttribute d again; a removeAttributeNode a@d => @d='def'('def') > /(%t a[xmlns:n='u'
  d='def'('def') {u}n:e='ns'('ns')])
a setAttributeNS u m:e mine => > /(%t a[xmlns:n='u' d='def'('def') {u}n:e='mine'('mine')])
a removeAttributeNS u e => > /(%t a[xmlns:n='u' d='def'('def') {u}n:e='ns'('ns')])
)");
    // As attributes have it, also where no attribute has had it yet.
    expect_steps("<!DOCTYPE t [<!ATTLIST a d NMTOKENS '  p   q '>]><a d='r'/>", R"(
a removeAttribute d => > /(%t a[d='p q'('p q')])
)");
}

}  // namespace
}  // namespace qvox_test

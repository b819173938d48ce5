// What all nodes have in common: the operations that change a tree, siblings, copies, normalize.
#include "support/script.h"

namespace qvox_test {
namespace {

using qvox::Node;

// What may stand under a node of that type, apart from fragments, which may stand anywhere.
bool acceptable(int parent, int child) {
    if (child == 0 || child == 11 || parent == 10) return child != 0;
    const std::string content = " 1 3 4 5 7 8 ";
    const std::string rows[] = {content, " 3 5 ", "",           "", content, content,
                                "",      "",      " 1 7 8 10 ", "", content, ""};
    return rows[parent - 1].find(' ' + std::to_string(child) + ' ') != std::string::npos;
}

TEST(Node, AcceptableChildren) {
    for (int pair = 0; pair < 12 * 13; ++pair) {
        const int parentType = pair / 13 + 1;
        const int childType = pair % 13;
        SCOPED_TRACE(std::to_string(childType) + " under " + std::to_string(parentType));
        Tree tree;
        Node* const parent = tree.drop(tree.make_type(parentType));
        Node* const child = childType == 0 ? nullptr : tree.drop(tree.make_type(childType));
        const bool good = acceptable(parentType, childType);
        EXPECT_EQ(
            raised_by([&] { parent->replaceChild(child, nullptr); }),
            good ? "DOM 8 old child node not found" : "DOM 3 new child node is not acceptable");
        const std::string refusal = good ? "" : "DOM 3 child node is not acceptable";
        EXPECT_EQ(raised_by([&] { parent->appendChild(child); }), refusal);
        EXPECT_EQ(raised_by([&] { parent->insertBefore(child, nullptr); }), refusal);
        EXPECT_EQ(parent->getFirstChild(), good && childType != 11 ? child : nullptr);
    }
}

// The text of a node of each type, its name and the parts of that, and its value.
TEST(Node, NamesAndValuesByType) {
    int type = Node::ELEMENT_NODE;
    for (const Row& row : cells_of(R"(
a[x='1'] => 'a' - - - -  @x=-* => 'x' - - - -  't' => '#text' - - - 't'
='c' => '#cdata-section' - - - 'c'  &r => 'r' - - - -  $e => 'e' - - - -  ?p'd' => 'p' - - - 'd'
!'c' => '#comment' - - - 'c'  / => '#document' - - - -  %d => 'd' - - - -
# => '#document-fragment' - - - -  ~n => 'n' - - - -
)")) {
        Tree tree;
        Node* const node = tree.drop(tree.make_type(type));
        EXPECT_EQ(node->getNodeType(), type);
        EXPECT_EQ(tree_text(node), row[0]);
        const std::string value = quoted(node->getNodeValue());
        EXPECT_EQ(names_of(*node) + ' ' + value, row[1]);
        EXPECT_EQ(node->hasAttributes(), type == Node::ELEMENT_NODE);
        EXPECT_EQ(node->getAttributes() != nullptr, type == Node::ELEMENT_NODE);
        EXPECT_FALSE(node->hasChildNodes());
        EXPECT_EQ(node->getOwnerDocument(), type == 9 || type == 10 ? nullptr : tree.document);
        EXPECT_TRUE(node->isSupported("core", "2.0") && !node->isSupported("XML", "2.0"));
        EXPECT_EQ(raised_by([&] { node->setPrefix("p"); }),
                  type <= Node::ATTRIBUTE_NODE ? "DOM 14 namespaceURI is null" : "");
        node->setNodeValue("new");
        EXPECT_EQ(quoted(node->getNodeValue()), value == "-" && type != 2 ? "-" : "'new'");
        ++type;
    }
}

TEST(Node, Changes) {
    expect_each("a(b(e) c d)", R"(
a appendChild b => b(e) > /(a(c d b(e)))  d appendChild e => e > /(a(b c d(e)))
e appendChild a => DOM 3 child node is not acceptable  a insertBefore b d => b(e) > /(a(c b(e) d))
a insertBefore d b => d > /(a(d b(e) c))  e insertBefore b e => DOM 3 child node is not acceptable
c insertBefore +x d => x > /(a(b(e) c(x) d))
# The reference is looked for when the child has left its place.
c; a insertBefore c c => DOM 8 ref child node not found > /(a(b(e) d)) + c
d insertBefore c e => c > /(a(b(e) d(c)))
c; d appendChild +z; d removeChild z; d insertBefore c b => DOM 8 ref child node not found >
  /(a(b(e) d)) + c + z
d appendChild +z; d removeChild z; d insertBefore c null => c > /(a(b(e) d(c))) + z
a replaceChild c b => b(e) > /(a(c d))  a replaceChild e c => c > /(a(b e d))
c; a replaceChild c c => DOM 8 old child node not found > /(a(b(e) d)) + c
c; a replaceChild c null => DOM 8 old child node not found > /(a(b(e) d)) + c
# A node that never had children looks for the old one first, an emptied one doesn't.
d replaceChild c b => DOM 8 old child node not found
c; d appendChild +z; d removeChild z; d replaceChild c b => DOM 8 old child node not found >
  /(a(b(e) d)) + c + z
e replaceChild b e => DOM 3 new child node is not acceptable  a removeChild c => c > /(a(b(e) d))
a removeChild e => DOM 8 old child node not found
a removeChild null => DOM 8 old child node not found
# Fragments.
a appendChild +#(x 't') => # > /(a(b(e) c d x 't')) + #
a insertBefore +#(x y) c => y > /(a(b(e) x y c d)) + #
a insertBefore +#(x y) null => # > /(a(b(e) c d x y)) + #
c insertBefore +#(x y) b => # > /(a(b(e) c(x y) d)) + #
a insertBefore +# null => # > /(a(b(e) c d)) + #  a insertBefore +# c => c > /(a(b(e) c d)) + #
a insertBefore +# e => e > /(a(b(e) c d)) + #
a insertBefore +#(x y) e => DOM 8 ref child node not found > /(a(b(e) c d)) + #(x y)
d appendChild +z; d removeChild z; d insertBefore +#(x y) e => DOM 8 ref child node not found >
  /(a(b(e) c d)) + z + #(x y)
a replaceChild +#(x y) c => c > /(a(b(e) #(x y) d))
a replaceChild +#(x y) e => DOM 8 old child node not found > /(a(b(e) c d)) + #(x y)
f: +#(x); f appendChild f => DOM 3 child node is not acceptable
)");
}

TEST(Node, ItemsOfAFragmentWhoseInsertionFailed) {
    // The first item has no parent any more and is still listed. It leaves the list when it goes
    // elsewhere.
    expect_steps("a(b(e) c)", R"(
f: +#(x y z) => #(x y z) > /(a(b(e) c)) + #(x y z)  x: f getFirstChild; y: x getNextSibling => y
a insertBefore f e => DOM 8 ref child node not found > /(a(b(e) c)) + #(x y z) + x
x getParentNode => null  x getNextSibling => null  y getParentNode => #(x y z)
y getPreviousSibling => x  c appendChild x => x > /(a(b(e) c(x))) + #(y z)
a insertBefore f e => DOM 8 ref child node not found > /(a(b(e) c(x))) + #(y z) + y
y free => > /(a(b(e) c(x))) + #(z)
z: f getFirstChild; a insertBefore f e => DOM 8 ref child node not found > /(a(b(e) c(x))) + #(z) +
  z
f removeChild z => z > /(a(b(e) c(x))) + # + z  z getNextSibling => null
)");
}

TEST(Node, FragmentsAsChildren) {
    Script script("a('t' #(b #(c)) d)");
    script.run("outer: t getNextSibling; inner: outer getLastChild");
    for (const std::string place : {"outer", "inner", "c"}) {
        EXPECT_EQ(script.run(place + " appendChild outer"), "DOM 3 child node is not acceptable");
        EXPECT_EQ(script.run(place + " insertBefore outer b"),
                  "DOM 3 child node is not acceptable");
        EXPECT_EQ(script.run(place + " replaceChild outer b"),
                  "DOM 3 new child node is not acceptable");
    }
    // Under a Text too. A fragment that is a child leaves its place, and one that is a child of
    // that fragment is emptied as well.
    EXPECT_EQ(script.run("t appendChild outer"), "# > /(a('t'(b c) d)) + # + #");
    // In front of a node, and copied.
    expect_steps("a(#(b #(c)) d)", R"(
a cloneNode true => a(#(b #(c)) d)
a insertBefore +#(#(x y) # z) d => z > /(a(#(b #(c)) x y z d)) + a(#(b #(c)) d) + #
)");
}

TEST(Node, NodesOfOtherDocuments) {
    // insertBefore doesn't compare, nor does anything under a document or a document type.
    expect_steps("a(b)", "x(y)", R"(
a appendChild y => DOM 4 child node document is different
a replaceChild y b => DOM 4 new child node document is different
a appendChild // => DOM 3 child node is not acceptable  a insertBefore y b => y > /(a(y b))/(x)
/ appendChild x => x > /(a(y b) x)  y getOwnerDocument => //
/ replaceChild y x => x > /(a(b) y) + x
)");
}

TEST(Node, SiblingsWhileTheListChanges) {
    expect_steps("a(b c d)", R"(
b getNextSibling => c  a insertBefore +x b => x > /(a(x b c d))  c getNextSibling => d
a appendChild b => b > /(a(x c d b))  d getNextSibling => b  b getNextSibling => null
d getPreviousSibling => c  c: a removeChild c; c free => > /(a(x d b))  d getPreviousSibling => x
a getFirstChild => x  a getLastChild => b
)");
}

TEST(Node, Normalize) {
    // Documents, document types and texts merge nothing themselves; an attribute does, and keeps
    // its value. The first text of a run stays, the others are free.
    expect_cells(R"(
a('ab' 'cd') => a('abcd')  a('a' - 'b' '') => a('ab')
a('a' ='b' 'c' 'd' !'e' 'f' 'g') => a('a' ='b' 'cd' !'e' 'fg')
a(b('c' 'd') &e('f' 'g' h('i' 'j')) #('k' 'l')) => a(b('cd') &e('fg' h('ij')) #('kl'))
%d('x' 'y' b('1' '2')) => %d('x' 'y' b('12'))
)",
                 [](const std::string& before) {
                     const Tree tree(before);
                     tree.document->normalize();
                     return tree_text(tree.document->getFirstChild());
                 });
    expect_steps("a('t' 'u' 'v')", R"(
/ appendChild +#('x' 'y' b('1' '2')); t appendChild +#('p' 'q' c('3' '4')) => # > /(a('t'('p' 'q'
  c('3' '4')) 'u' 'v') 'x' 'y' b('1' '2')) + # + #
u: u; v: v; / normalize => > /(a('tuv'('p' 'q' c('34'))) 'x' 'y' b('12')) + # + # + 'u' + 'v'
u free; a appendChild v => 'v' > /(a('tuv'('p' 'q' c('34')) 'v') 'x' 'y' b('12')) + # + #
x: / createAttribute x; x appendChild +'w'; x appendChild +'z'; x normalize => > /(a('tuv'('p' 'q'
  c('34')) 'v') 'x' 'y' b('12')) + # + # + @x=-*('wz') + 'z'
)");
}

// A copy in the document itself or in another one; nothing is shared with the source, which goes
// first.
TEST(Node, Copies) {
    for (const Row& row : cells_of(R"(
{u}p:a[x='1' {v}q:y=''](b[z='2'] 't' !'c' =- ?p- &r(c) -) => {u}p:a[x='1' {v}q:y='']
't' => 't'  - => -  ='c' => ='c'  !'c' => !'c'  ?p'd' => ?p'd'  &r(a('t')) => &r  #(a 't' b) => #
)")) {
        for (const bool isImport : {false, true}) {
            Tree target;
            Tree source("r('s')");
            qvox::Document* const owner = isImport ? target.document : source.document;
            Node* const node = source.make(row[0].c_str());
            const auto copy = [&](bool deep) {
                return source.drop(isImport ? owner->importNode(node, deep)
                                            : node->cloneNode(deep));
            };
            EXPECT_EQ(tree_text(copy(false)), row[1]);
            const Node* const deep = copy(true);
            EXPECT_EQ(tree_text(node), row[0]);
            source.parser.freeNode(node);
            EXPECT_EQ(tree_text(deep), row[0]);
            EXPECT_EQ(deep->getParentNode(), nullptr);
            for (const Node* one = deep; one != nullptr; one = one->getFirstChild()) {
                EXPECT_EQ(one->getOwnerDocument(), owner);
                if (!one->hasAttributes()) continue;
                const Node* const attribute = one->getAttributes()->item(0);
                EXPECT_EQ(attribute->getOwnerDocument(), owner);
                EXPECT_EQ(static_cast<const qvox::Attr*>(attribute)->getOwnerElement(), one);
            }
        }
    }
}

TEST(Node, ClonesOfOtherTypes) {
    // An attribute is not copied by itself. A copy of a document is one, and its nodes still say
    // the old one.
    Script script("%d(!'c' ?p'd') a[x='1'](b)");
    expect_steps(script, R"(
a@x setValue 2 => > /(%d(!'c' ?p'd') a[x='2'('2')](b))  x: a@x cloneNode true => @x='2'('2')
c: a cloneNode false => a[x='2']  c@x getOwnerElement => a[x='2']
t: d cloneNode true => %d(!'c' ?p'd')  copy: / cloneNode true; copy => /(%d(!'c' ?p'd') a[x='2'](b))
copy getOwnerDocument => null  root: copy getDocumentElement; root getOwnerDocument => /
new: copy createElement n; root appendChild new => DOM 4 child node document is different
)");
    EXPECT_EQ(script.node("x"), script.node("a@x"));
    for (const int type : {Node::ENTITY_NODE, Node::NOTATION_NODE}) {
        Tree tree;
        Node* const node = tree.drop(tree.make_type(type));
        if (type == Node::ENTITY_NODE) node->appendChild(tree.make("b('t')"));
        Node* const other = tree.drop(tree.document->importNode(node, true));
        EXPECT_EQ(tree_text(other), type == Node::ENTITY_NODE ? "$e(b('t'))" : "~n");
        EXPECT_EQ(identifiers_of(*other), type == Node::ENTITY_NODE ? "'p' 's' 'n'" : "'p' 's'");
    }
}

}  // namespace
}  // namespace qvox_test

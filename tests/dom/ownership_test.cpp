// Who owns what, and that no order of legal calls frees twice or closes a circle. That nothing is
// lost the sanitizers see, and the tests of faults.
#include "support/script.h"

namespace qvox_test {
namespace {

using qvox::Document;
using qvox::Element;
using qvox::Node;

// Under what hangs from a node the node can't go, whether by children or by a map.
TEST(Ownership, NoCircles) {
    Script script("%d a[x='1'](b[y='2'](c))");
    script.run("r: a@x appendChild +&r(e g[h='']); e: r getFirstChild; g: r getLastChild");
    script.run("z: / createAttribute z; s: z appendChild +&s(k m[n='']); k: s getFirstChild");
    script.run("m: s getLastChild");
    EXPECT_EQ(script.run("r replaceChild a e"), "DOM 3 new child node is not acceptable");
    for (const std::string& call :
         split("e appendChild a, r insertBefore a e, d appendChild /, a setNamedItem a, "
               "a setNamedItem /, b setNamedItem a, g setNamedItem a@x, g setNamedItem r, "
               "m setNamedItem z, m setAttributeNode z, k setAttributeNode z, "
               "b@y appendChild r; g setNamedItem a",
               ',')) {
        EXPECT_EQ(script.run(call), "DOM 3 child node is not acceptable") << call;
    }
    EXPECT_EQ(script.tree.text(), "/(%d a[x='1'](b[y='2'(&r(e g[h='']))](c)))");
}

// The copy of an attribute belongs to the document of its element's copy, whoever made the
// original.
TEST(Ownership, CopiesOfForeignAttributes) {
    Tree tree("a(b[y='2'])");
    const Tree target;
    Node* deep = nullptr;
    Node* imported = nullptr;
    {
        Tree other("<o p:x='1' xmlns:p='u'/>");
        Element* const o = other.element("o");
        Node* const x = o->removeAttributeNode(o->getAttributeNode("p:x"));
        tree.element("b")->getAttributes()->setNamedItem(x);
        deep = tree.drop(tree["a"]->cloneNode(true));
        imported = target.document->appendChild(target.document->importNode(tree["a"], true));
        tree.parser.freeNode(tree.element("b")->getAttributes()->removeNamedItem("p:x"));
    }
    for (const Node* const copy : {deep, imported}) {
        EXPECT_EQ(tree_text(copy), "a(b[y='2' {u}p:x='1'])");
    }
}

// A node is in one collection at a time, and freeing it takes it out.
TEST(Ownership, OnePlaceAtATime) {
    expect_steps("a[x='1' y='2'](b c[z='3'])", R"(
d: +%d('t'); a@y free => > /(a[x='1'](b c[z='3'])) + %d('t')
x: a@x; c setNamedItem x => null > /(a(b c[z='3' x='1'])) + %d('t')
b: b; a setNamedItem b => null > /(a[b](c[z='3' x='1'])) + %d('t') + b  b getParentNode => null
b getNextSibling => null  c appendChild b => b > /(a(c[z='3' x='1'](b))) + %d('t')
# An attribute that leaves its map in whatever way has no owner element any more.
d appendChild x => @x='1' > /(a(c[z='3'](b))) + %d('t' @x='1')  x getOwnerElement => null
a setAttributeNode x => null > /(a[x='1'](c[z='3'](b))) + %d('t')  x getParentNode => null
t: d getFirstChild; d replaceChild x t => 't' > /(a(c[z='3'](b))) + %d(@x='1') + 't'
x getOwnerElement => null
# Items of a map are no children.
n: +n; c insertBefore n c@z => DOM 8 ref child node not found
c replaceChild n c@z => DOM 8 old child node not found
c removeChild c@z => DOM 8 old child node not found
)");
}

TEST(Ownership, MapsTakeEveryType) {
    for (int type = 1; type <= 12; ++type) {
        SCOPED_TRACE(type);
        Tree tree("<!DOCTYPE d [<!ENTITY e 'v'><!NOTATION n SYSTEM 's'>]><a x='1'><b y='1'/></a>");
        Element* const a = tree.element("a");
        Node* const node = tree.drop(tree.make_type(type));
        const std::string name = plain(node->getNodeName());
        tree.drop(a->getAttributes()->setNamedItem(node));
        // Here what the map has is freed with it, and with the maps of a document type.
        tree.drop(tree.element("b")->getAttributes()->setNamedItem(tree.make_type(type)));
        const qvox::DocumentType* const doctype = tree.document->getDoctype();
        Node* const declaration = tree.document->importNode(doctype->getEntities()->item(0), true);
        tree.drop(doctype->getEntities()->setNamedItem(tree.make_type(type)));
        tree.drop(doctype->getNotations()->setNamedItem(declaration));
        tree.parser.freeNode(doctype->getNotations()->item(0));
        tree.parser.freeNode(tree.document->cloneNode(true));
        if (type == Node::ATTRIBUTE_NODE) continue;
        // It is no attribute.
        EXPECT_EQ(a->getAttributes()->getNamedItem(name.c_str()), node);
        EXPECT_EQ(quoted(a->getAttribute(name.c_str())), "-");
        EXPECT_EQ(tree_text(tree.drop(a->cloneNode(false))), "a[x='1']");
        if (name[0] == '#') {
            EXPECT_EQ(a->getAttributes()->removeNamedItem(name.c_str()), node);
            continue;
        }
        a->setAttribute(name.c_str(), "2");
        EXPECT_EQ(quoted(a->getAttribute(name.c_str())), "'2'");
        a->removeAttribute(name.c_str());
    }
}

TEST(Ownership, DocumentTypesTakeEveryType) {
    Tree tree;
    Node* const doctype = tree.document->appendChild(tree.make("%d"));
    for (int type = 1; type <= 12; ++type) doctype->appendChild(tree.drop(tree.make_type(type)));
    const std::string text = "%d(a[x='1'] @x=-* 't' ='c' &r $e ?p'd' !'c' / %d ~n)";
    Node* const copies[] = {doctype->cloneNode(true), tree.document->cloneNode(true)};
    EXPECT_EQ(tree_text(copies[0]), text);
    for (Node* const copiedType : {copies[0], copies[1]->getFirstChild()}) {
        tree.drop(copiedType->getChildNodes()->item(8));  // the document in it
    }
    for (Node* const copy : copies) tree.parser.freeNode(copy);
    tree.document->normalize();
    EXPECT_EQ(tree.text(), "/(" + text + ')');
}

// What a document keeps for the end may be used again before. Whose it is tells the tree that it
// stood in.
TEST(Ownership, LeftOvers) {
    expect_steps("a[x='1' y='2']('p' 'q' 'r') b", R"(
x: a@x; y: a@y; q: q; r: r; a removeAttribute x; a removeAttribute y => > /(a('p' 'q' 'r') b) +
  @x='1' + @y='2'
a normalize => > /(a('pqr') b) + @x='1' + @y='2' + 'q' + 'r'
y free; q free; b setAttributeNode x => null > /(a('pqr') b[x='1']) + 'r'
b appendChild r => 'r' > /(a('pqr') b[x='1']('r'))  a: / removeChild a; a free => > /(b[x='1']('r'))
b removeAttribute x; x free => > /(b('r'))
)");
    Tree tree("a('r' b c('z'))");
    {
        Tree other("o('s' &t('u' 'v') d[x='1'])");
        Element* const d = other.element("d");
        for (Node* const moved : {other["s"], other["t"], static_cast<Node*>(d)}) {
            tree["a"]->insertBefore(moved, tree["b"]);
        }
        d->removeAttribute("x");
        tree.parser.freeNode(tree["a"]->removeChild(d));
    }
    tree["a"]->normalize();
    EXPECT_EQ(tree.text(), "/(a('rs' &t('uv') b c('z')))");
    qvox::Range* const range = tree.document->createRange();
    range->setStart(tree["uv"], 1);
    range->setEnd(tree["uv"], 2);
    range->deleteContents();
    EXPECT_EQ(tree.text(), "/(a('rs' &t('u') b c('z')))");
    range->selectNodeContents(tree["a"]);
    range->deleteContents();
    EXPECT_EQ(tree.text(), "/(a)");
    tree.document->freeRange(range);
}

// Nobody owns a document, wherever it stands: freeing it takes it out, and what it stood in can be
// freed before it.
TEST(Ownership, Documents) {
    for (const bool areFirst : {true, false}) {
        qvox::DOMParser parser;
        Document* const inMap = parse_document(parser, "<m/>");
        Document* const inType = parser.createDocument();
        const auto free_both = [&] {
            for (Document* const document : {inMap, inType}) parser.free(document);
        };
        {
            Tree tree("%d a[x='1']");
            tree.element("a")->getAttributes()->setNamedItem(inMap);
            tree["d"]->appendChild(inType);
            if (areFirst) free_both();
            EXPECT_EQ(tree.text(), areFirst ? "/(%d a[x='1'])" : "/(%d(/) a[x='1' /(m)])");
        }
        if (!areFirst) free_both();
    }
    // One that is in a map of its own tree, and in one of a node that it keeps.
    Script script("a[x='1']");
    script.run("a@x appendChild +&r(b[z='3']); b: a@x getFirstChild; b: b getFirstChild");
    script.run("b setNamedItem /; a removeAttribute x; a setAttribute y 2; a setNamedItem /");
}

}  // namespace
}  // namespace qvox_test

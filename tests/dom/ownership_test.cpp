// Who owns what, and that no order of legal calls frees twice, leaks or closes a circle.
#include <functional>
#include <malloc.h>

#include <gtest/gtest.h>

#include "support/tree_text.h"

namespace qvox_test {
namespace {

using qvox::Attr;
using qvox::Document;
using qvox::Element;
using qvox::Node;

// All that a caller may have in hand, each freed in the way that the headers name.
void use_everything() {
    qvox::DOMParser parser;
    Document* const document = parse_document(
        parser,
        "<!DOCTYPE a [<!--c--><!ENTITY e 'v'><!NOTATION n SYSTEM 's'><!ATTLIST a d CDATA 'x'>]>"
        "<a b='1' c='2'><b>t</b>u<!--w--><?p d?><![CDATA[x]]></a>");
    Element* const a = document->getDocumentElement();
    Document* const copy = static_cast<Document*>(document->cloneNode(true));
    Document* const other = parser.getImplementation()->createDocument("u", "p:o", nullptr);
    other->getDocumentElement()->appendChild(other->importNode(a, true));
    parser.freeNode(other->importNode(a->getAttributeNode("b"), true));
    parser.freeNode(a->cloneNode(true));
    parser.freeNode(a->removeChild(a->getFirstChild()));
    parser.freeNode(a->removeAttributeNode(a->getAttributeNode("b")));
    a->setAttribute("c", "3");
    a->removeAttribute("c");
    a->setAttribute("", "unattached");
    a->setAttributeNS({}, "unattached", "");
    parser.freeNode(document->getDoctype()->getEntities()->removeNamedItem("e"));
    parser.freeNode(document->getDoctype()->cloneNode(true));
    a->appendChild(document->createTextNode("1"));
    a->appendChild(document->createTextNode("2"));
    document->normalize();
    Node* const fragment = document->createDocumentFragment();
    fragment->appendChild(document->createElement("f"));
    parser.freeNode(fragment->cloneNode(true));
    a->appendChild(fragment);
    parser.freeNode(fragment);
    document->getElementsByTagName("*");
    parser.free(a->getElementsByTagNameNS("*", "*"));
    document->freeTreeWalker(document->createTreeWalker(a, 1, nullptr, false));
    qvox::NodeIterator* const iterator = document->createNodeIterator(a, 1, nullptr, false);
    iterator->detach();
    document->freeNodeIterator(iterator);
    EXPECT_NE(raised_by([&] { document->createElement("1"); }), "");
    EXPECT_NE(raised_by([&] { parse_document(parser, "<a><b>&#0;"); }), "");
    document->getDoctype()->getInternalSubset();
    parser.getImplementation()->freeDocument(other);
    parser.free(copy);
    parser.free(document);
}

// The sanitizers see what is left at the end of the process; a plain build compares here. The bound
// is below 40 bytes a turn, which is less than the smallest node.
TEST(Ownership, EverythingCanBeFreed) {
    const auto inUse = [] { return mallinfo2().uordblks + mallinfo2().hblkhd; };
    std::size_t before = 0;
    std::size_t after = 0;
    output_of([&] {
        for (int i = 0; i < 10; ++i) use_everything();
        before = inUse();
        for (int i = 0; i < 500; ++i) use_everything();
        after = inUse();
    });
    EXPECT_LT(after, before + 20000);
}

// Under what hangs from a node the node can't go, whether by children or by a map.
TEST(Ownership, NoCircles) {
    Tree tree("%d a[x='1'](b[y='2'](c))");
    Element* const a = tree.element("a");
    Attr* const x = a->getAttributeNode("x");
    Attr* const y = tree.element("b")->getAttributeNode("y");
    Node* const reference = x->appendChild(tree.make("&r(e)"));
    auto* const e = static_cast<Element*>(reference->getFirstChild());
    auto* const withMap = static_cast<Element*>(reference->appendChild(tree.make("g[h='']")));
    Attr* const z = tree.drop(tree.document->createAttribute("z"));
    auto* const inZ =
        static_cast<Element*>(z->appendChild(tree.make("&s(k m[n=''])"))->getFirstChild());
    auto* const inZWithMap = static_cast<Element*>(inZ->getNextSibling());
    Document* const document = tree.document;
    const std::function<void()> calls[] = {
        [&] { e->appendChild(a); },
        [&] { reference->insertBefore(a, e); },
        [&] { reference->replaceChild(a, e); },
        [&] { tree["d"]->appendChild(document); },
        [&] { a->getAttributes()->setNamedItem(a); },
        [&] { a->getAttributes()->setNamedItem(document); },
        [&] { tree["b"]->getAttributes()->setNamedItem(a); },
        [&] { withMap->getAttributes()->setNamedItem(x); },
        [&] { withMap->getAttributes()->setNamedItem(reference); },
        [&] { inZWithMap->getAttributes()->setNamedItem(z); },
        [&] { inZWithMap->setAttributeNode(z); },
        [&] { inZ->setAttributeNode(z); },
        [&] { y->appendChild(reference)->getLastChild()->getAttributes()->setNamedItem(a); },
    };
    for (const auto& call : calls) {
        EXPECT_EQ(raised_by(call).substr(0, 6), "DOM 3 ") << &call - calls;
    }
    EXPECT_EQ(tree.text(), "/(%d a[x='1'](b[y='2'(&r(e g[h='']))](c)))");
}

// A node is in one collection at a time, and freeing it takes it out.
TEST(Ownership, OnePlaceAtATime) {
    Tree tree("a[x='1' y='2'](b c[z='3'])");
    Node* const doctype = tree.drop(tree.make("%d('t')"));
    qvox::NamedNodeMap* const map = tree["a"]->getAttributes();
    const auto state = [&] { return tree.text() + tree_text(doctype); };
    tree.parser.freeNode(map->getNamedItem("y"));
    EXPECT_EQ(state(), "/(a[x='1'](b c[z='3']))%d('t')");
    auto* const x = static_cast<Attr*>(map->getNamedItem("x"));
    tree["c"]->getAttributes()->setNamedItem(x);
    EXPECT_EQ(state(), "/(a(b c[z='3' x='1']))%d('t')");
    map->setNamedItem(tree["b"]);
    EXPECT_EQ(state(), "/(a[b](c[z='3' x='1']))%d('t')");
    EXPECT_EQ(map->item(0)->getParentNode(), nullptr);
    EXPECT_EQ(map->item(0)->getNextSibling(), nullptr);
    tree["c"]->appendChild(map->item(0));
    EXPECT_EQ(state(), "/(a(c[z='3' x='1'](b)))%d('t')");
    // An attribute that leaves its map in whatever way has no owner element any more.
    doctype->appendChild(x);
    EXPECT_EQ(state(), "/(a(c[z='3'](b)))%d('t' @x='1')");
    EXPECT_EQ(x->getParentNode(), doctype);
    EXPECT_EQ(x->getOwnerElement(), nullptr);
    EXPECT_EQ(raised_by([&] { tree.element("a")->setAttributeNode(x); }), "");
    EXPECT_EQ(x->getParentNode(), nullptr);
    tree.drop(doctype->replaceChild(x, doctype->getFirstChild()));
    EXPECT_EQ(x->getOwnerElement(), nullptr);
    EXPECT_EQ(state(), "/(a(c[z='3'](b)))%d(@x='1')");
    // Items of a map are no children.
    Element* const c = tree.element("c");
    Attr* const z = c->getAttributeNode("z");
    Node* const loose = tree.drop(tree.make("n"));
    EXPECT_EQ(raised_by([&] { c->insertBefore(loose, z); }), "DOM 8 ref child node not found");
    EXPECT_EQ(raised_by([&] { c->replaceChild(loose, z); }), "DOM 8 old child node not found");
    EXPECT_EQ(raised_by([&] { c->removeChild(z); }), "DOM 8 old child node not found");
}

TEST(Ownership, MapsTakeEveryType) {
    for (int type = 1; type <= 12; ++type) {
        SCOPED_TRACE(type);
        Tree tree("r(a[x='1'] b)");
        Element* const a = tree.element("a");
        Node* const node = tree.drop(tree.make_type(type));
        const std::string name = plain(node->getNodeName());
        tree.drop(a->getAttributes()->setNamedItem(node));
        if (type == Node::ATTRIBUTE_NODE) continue;
        EXPECT_EQ(a->getAttributes()->getNamedItem(name.c_str()), node);
        // It is no attribute.
        EXPECT_EQ(quoted(a->getAttribute("x")), "'1'");
        EXPECT_TRUE(a->getAttribute(name.c_str()).isNull());
        EXPECT_EQ(a->getAttributeNode(name.c_str()), nullptr);
        EXPECT_EQ(tree.document->getElementById("1"), nullptr);
        for (Document* const target : {tree.document, static_cast<Document*>(nullptr)}) {
            Node* const copy = target == nullptr ? a->cloneNode(true) : target->importNode(a, true);
            EXPECT_EQ(quoted(static_cast<Element*>(copy)->getAttribute("x")), "'1'");
            tree.parser.freeNode(copy);
        }
        tree.document->normalize();
        if (auto* const text = dynamic_cast<qvox::Text*>(node)) tree.drop(text->splitText(0));
        if (name[0] == '#') {
            EXPECT_EQ(a->getAttributes()->removeNamedItem(name.c_str()), node);
            continue;
        }
        a->setAttribute(name.c_str(), "2");
        EXPECT_EQ(quoted(a->getAttribute(name.c_str())), "'2'");
        a->removeAttribute(name.c_str());
    }
}

// Where the element goes together with what its map has, and the maps of a document type.
TEST(Ownership, MapsFreeEveryType) {
    for (int type = 1; type <= 12; ++type) {
        Tree tree("a[x='1'](b[y='2'])");
        tree.drop(tree["a"]->getAttributes()->setNamedItem(tree.make_type(type)));
        Document* const document = parse_document(
            tree.parser, "<!DOCTYPE a [<!ENTITY e 'v'><!NOTATION n SYSTEM 's'>]><a/>");
        const qvox::DocumentType* const doctype = document->getDoctype();
        Node* const declaration = document->importNode(doctype->getEntities()->item(0), true);
        tree.drop(doctype->getEntities()->setNamedItem(tree.make_type(type)));
        tree.drop(doctype->getNotations()->setNamedItem(declaration));
        tree.parser.freeNode(doctype->getNotations()->item(0));
        tree.parser.freeNode(document->cloneNode(true));
        tree.parser.free(document);
    }
}

TEST(Ownership, DocumentTypesTakeEveryType) {
    Tree tree;
    Node* const doctype = tree.document->appendChild(tree.make("%d"));
    for (int type = 1; type <= 12; ++type) doctype->appendChild(tree.drop(tree.make_type(type)));
    const std::string text = "%d(a[x='1'] @x=-* 't' ='c' &r $e ?p'd' !'c' / %d ~n)";
    EXPECT_EQ(tree.text(), "/(" + text + ')');
    Node* const copy = doctype->cloneNode(true);
    EXPECT_EQ(tree_text(copy), text);
    tree.parser.freeNode(copy);
    tree.parser.freeNode(tree.document->cloneNode(true));
    EXPECT_EQ(tree.text(), "/(" + text + ')');
    tree.document->normalize();
    // A document in it is freed with it.
    Tree other("%e");
    Document* const inner = tree.parser.createDocument();
    inner->appendChild(inner->createElement("i"));
    other["e"]->appendChild(inner);
    EXPECT_EQ(raised_by([&] { tree.parser.freeNode(inner); }),
              "QVOX 4 attempt to free node with parent");
    EXPECT_EQ(other.text(), "/(%e(/(i)))");
}

TEST(Ownership, FragmentsInFragments) {
    Tree tree("a(#(b #(c)) d)");
    Node* const copy = tree["a"]->cloneNode(true);
    EXPECT_EQ(tree_text(copy), "a(#(b #(c)) d)");
    tree.parser.freeNode(copy);
    Node* const outer = tree.drop(tree.make("#(#(x y) # z)"));
    tree.drop(outer->getFirstChild());
    tree.drop(outer->getFirstChild()->getNextSibling());
    EXPECT_EQ(tree_text(tree["a"]->insertBefore(outer, tree["d"])), "z");
    EXPECT_EQ(tree.text(), "/(a(#(b #(c)) x y z d))");
    EXPECT_EQ(tree_text(outer), "#");
}

// What a document keeps for the end may be used again before.
TEST(Ownership, LeftOvers) {
    Tree tree("a[x='1' y='2']('p' 'q' 'r') b");
    Element* const a = tree.element("a");
    Element* const b = tree.element("b");
    Attr* const x = a->getAttributeNode("x");
    Attr* const y = a->getAttributeNode("y");
    Node* const q = tree["q"];
    Node* const r = tree["r"];
    a->removeAttribute("x");
    a->removeAttribute("y");
    a->normalize();
    tree.parser.freeNode(y);
    tree.parser.freeNode(q);
    b->setAttributeNode(x);
    b->appendChild(r);
    tree.parser.freeNode(tree.document->removeChild(a));
    EXPECT_EQ(tree.text(), "/(b[x='1']('r'))");
    b->removeAttribute("x");
    EXPECT_EQ(tree_text(x), "@x='1'");
    x->setValue("2");
    tree.parser.freeNode(x);
    // Of another document: with that.
    Tree other("o('s')");
    b->insertBefore(other["s"], nullptr);
    b->normalize();
    EXPECT_EQ(tree.text(), "/(b('rs'))");
}

}  // namespace
}  // namespace qvox_test

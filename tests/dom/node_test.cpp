// What all nodes have in common: the operations that change a tree, siblings, copies, normalize.
#include <gtest/gtest.h>

#include "support/tree_text.h"

namespace qvox_test {
namespace {

using qvox::Node;

// What may stand under a node of that type, apart from fragments, which may stand anywhere.
bool acceptable(int parent, int child) {
    if (child == Node::DOCUMENT_FRAGMENT_NODE || parent == Node::DOCUMENT_TYPE_NODE)
        return child != 0;
    const std::string content = " 1 3 4 5 7 8 ";
    const std::string rows[] = {content, " 3 5 ", "",           "", content, content,
                                "",      "",      " 1 7 8 10 ", "", content, ""};
    return rows[parent - 1].find(' ' + std::to_string(child) + ' ') != std::string::npos;
}

TEST(Node, AcceptableChildren) {
    for (int parentType = 1; parentType <= 12; ++parentType) {
        for (int childType = 0; childType <= 12; ++childType) {
            Tree tree;
            Node* const parent = tree.make_type(parentType);
            Node* const child = childType == 0 ? nullptr : tree.make_type(childType);
            const bool good = acceptable(parentType, childType);
            SCOPED_TRACE(std::to_string(childType) + " under " + std::to_string(parentType));
            EXPECT_EQ(
                raised_by([&] { parent->replaceChild(child, nullptr); }),
                good ? "DOM 8 old child node not found" : "DOM 3 new child node is not acceptable");
            const std::string refusal = good ? "" : "DOM 3 child node is not acceptable";
            EXPECT_EQ(raised_by([&] { parent->appendChild(child); }), refusal);
            EXPECT_EQ(raised_by([&] { parent->insertBefore(child, nullptr); }), refusal);
            const bool attached = good && childType != Node::DOCUMENT_FRAGMENT_NODE;
            EXPECT_EQ(parent->getFirstChild(), attached ? child : nullptr);
            if (attached) parent->removeChild(child);
            tree.parser.freeNode(child);
            tree.parser.freeNode(parent);
        }
    }
}

// "12" of the types in one name is not what a table of texts can show.
TEST(Node, NamesAndValuesByType) {
    const struct {
        const char* text;
        const char* name;
        const char* value;
    } cases[] = {{"@x=-*", "'x'", "-"},
                 {"'t'", "'#text'", "'t'"},
                 {"='c'", "'#cdata-section'", "'c'"},
                 {"&r", "'r'", "-"},
                 {"$e", "'e'", "-"},
                 {"?p'd'", "'p'", "'d'"},
                 {"!'c'", "'#comment'", "'c'"},
                 {"/", "'#document'", "-"},
                 {"%d", "'d'", "-"},
                 {"#", "'#document-fragment'", "-"},
                 {"~n", "'n'", "-"}};
    int type = Node::ATTRIBUTE_NODE;
    for (const auto& test : cases) {
        Tree tree;
        Node* const node = tree.make_type(type);
        EXPECT_EQ(node->getNodeType(), type);
        EXPECT_EQ(tree_text(node), test.text);
        EXPECT_EQ(quoted(node->getNodeName()), test.name);
        EXPECT_EQ(quoted(node->getNodeValue()), test.value);
        EXPECT_TRUE(node->getNamespaceURI().isNull() && node->getLocalName().isNull());
        EXPECT_TRUE(node->getPrefix().isNull());
        EXPECT_EQ(node->getAttributes(), nullptr);
        EXPECT_FALSE(node->hasAttributes() || node->hasChildNodes());
        EXPECT_EQ(node->getOwnerDocument(), type == 9 || type == 10 ? nullptr : tree.document);
        EXPECT_TRUE(node->isSupported("core", "2.0"));
        EXPECT_FALSE(node->isSupported("XML", "2.0"));
        const bool prefixed = type == Node::ATTRIBUTE_NODE;
        EXPECT_EQ(raised_by([&] { node->setPrefix("p"); }),
                  prefixed ? "DOM 14 namespaceURI is null" : "");
        node->setNodeValue("new");
        EXPECT_EQ(quoted(node->getNodeValue()), test.value[0] == '-' && type != 2 ? "-" : "'new'");
        tree.parser.freeNode(node);
        ++type;
    }
}

// The tree is /(a(b(e) c d)), and b or d may have been emptied before; `loose` stands beside it.
struct Change {
    const char* loose;
    const char* call;  // operation, then parent, child and reference
    const char* result;
    const char* after;
    const char* childAfter = "";  // the child with its parent's name, where that is in question
    const char* emptied = "";
};

std::string call(Node& parent, const std::string& operation, Node* child, Node* reference) {
    Node* result = nullptr;
    const std::string raised = raised_by([&] {
        if (operation == "append") result = parent.appendChild(child);
        if (operation == "remove") result = parent.removeChild(child);
        if (operation == "insert") result = parent.insertBefore(child, reference);
        if (operation == "replace") result = parent.replaceChild(child, reference);
    });
    return raised.empty() ? tree_text(result) : raised;
}

void check_change(const Change& test) {
    SCOPED_TRACE(test.loose + std::string(" : ") + test.call);
    Tree tree("a(b(e) c d)");
    Tree beside;
    Node* const loose = *test.loose == '\0' ? nullptr : tree.make(test.loose);
    if (loose != nullptr && loose->getNodeType() != Node::DOCUMENT_FRAGMENT_NODE) {
        beside.document->appendChild(loose);
    }
    const auto named = [&](const std::string& name) -> Node* {
        if (name == "#") return loose;
        Node* const found = tree[name.c_str()];
        return found != nullptr ? found : beside[name.c_str()];
    };
    if (*test.emptied != '\0') {
        Node* const parent = tree[test.emptied];
        parent->appendChild(tree.make("z"));
        while (parent->hasChildNodes()) tree.drop(parent->removeChild(parent->getLastChild()));
    }
    std::istringstream words(test.call);
    std::string operation;
    std::string parent;
    std::string child;
    std::string reference;
    words >> operation >> parent >> child >> reference;
    Node* const childNode = named(child);
    Node* const referenceNode = named(reference);
    for (Node* const node : {loose, childNode, referenceNode}) tree.drop(node);
    EXPECT_EQ(call(*named(parent), operation, childNode, referenceNode), test.result);
    EXPECT_EQ(tree.text(), std::string("/(a(") + test.after + "))");
    if (*test.childAfter == '\0') return;
    Node* const above = childNode->getParentNode();
    EXPECT_EQ(
        tree_text(childNode) + " in " + (above == nullptr ? "none" : plain(above->getNodeName())),
        test.childAfter);
}

TEST(Node, Changes) {
    const char* const noReference = "DOM 8 ref child node not found";
    const char* const noOld = "DOM 8 old child node not found";
    const Change cases[] = {
        {"", "append a b", "b(e)", "c d b(e)"},
        {"", "append d e", "e", "b c d(e)"},
        {"", "append e a", "DOM 3 child node is not acceptable", "b(e) c d"},
        {"", "append e e", "DOM 3 child node is not acceptable", "b(e) c d"},
        {"", "append a null", "DOM 3 child node is not acceptable", "b(e) c d"},
        {"", "insert a b d", "b(e)", "c b(e) d", "b(e) in a"},
        {"", "insert a d b", "d", "d b(e) c", "d in a"},
        {"", "insert a b null", "b(e)", "c d b(e)"},
        {"", "insert e b e", "DOM 3 child node is not acceptable", "b(e) c d"},
        {"", "insert a null b", "DOM 3 child node is not acceptable", "b(e) c d"},
        {"x", "insert a x c", "x", "b(e) x c d", "x in a"},
        {"x", "insert c x d", "x", "b(e) c(x) d", "x in c"},
        // The reference is looked for when the child has left its place.
        {"", "insert a c c", noReference, "b(e) d", "c in none"},
        {"", "insert a c e", noReference, "b(e) d", "c in none"},
        {"", "insert b c d", noReference, "b(e) d", "c in none"},
        {"", "insert d c b", noReference, "b(e) d", "c in none", "d"},
        {"", "insert d c null", "c", "b(e) d(c)", "c in d", "d"},
        {"", "replace a c b", "b(e)", "c d", "c in a"},
        {"", "replace a e c", "c", "b e d", "e in a"},
        {"x", "replace a x d", "d", "b(e) c x", "x in a"},
        {"", "replace a c c", noOld, "b(e) d", "c in none"},
        {"", "replace a c e", noOld, "b(e) d", "c in none"},
        {"", "replace a c null", noOld, "b(e) d", "c in none"},
        // A node that never had children looks for the old one first, an emptied one doesn't.
        {"", "replace d c b", noOld, "b(e) c d", "c in a"},
        {"", "replace d c b", noOld, "b(e) d", "c in none", "d"},
        {"", "replace e b e", "DOM 3 new child node is not acceptable", "b(e) c d"},
        {"", "replace a null b", "DOM 3 new child node is not acceptable", "b(e) c d"},
        {"", "remove a c", "c", "b(e) d", "c in none"},
        {"", "remove a e", noOld, "b(e) c d", "e in b"},
        {"", "remove c e", noOld, "b(e) c d", "e in b"},
        {"", "remove a null", noOld, "b(e) c d"},
        // Fragments.
        {"#(x 't')", "append a #", "#", "b(e) c d x 't'", "# in none"},
        {"#", "append a #", "#", "b(e) c d"},
        {"#(x y)", "insert a # c", "y", "b(e) x y c d", "# in none"},
        {"#(x y)", "insert a # null", "#", "b(e) c d x y"},
        {"#(x y)", "insert c # b", "#", "b(e) c(x y) d"},
        {"#", "insert a # null", "#", "b(e) c d"},
        {"#", "insert a # c", "c", "b(e) c d"},
        {"#", "insert a # e", "e", "b(e) c d"},
        {"#(x y)", "insert a # e", noReference, "b(e) c d", "#(x y) in none"},
        {"#(x y)", "insert d # e", noReference, "b(e) c d", "#(x y) in none", "d"},
        {"#(x y)", "replace a # c", "c", "b(e) #(x y) d", "#(x y) in a"},
        {"#", "replace a # b", "b(e)", "# c d", "# in a"},
        {"#(x y)", "replace a # e", noOld, "b(e) c d", "#(x y) in none"},
        {"#(x)", "append # #", "DOM 3 child node is not acceptable", "b(e) c d", "#(x) in none"},
    };
    for (const Change& test : cases) check_change(test);
}

TEST(Node, ItemsOfAFragmentWhoseInsertionFailed) {
    Tree tree("a(b(e) c)");
    Node* const fragment = tree.drop(tree.make("#(x y z)"));
    Node* const x = fragment->getFirstChild();
    Node* const y = x->getNextSibling();
    EXPECT_EQ(raised_by([&] { tree["a"]->insertBefore(fragment, tree["e"]); }),
              "DOM 8 ref child node not found");
    // The first item has no parent any more and is still listed.
    EXPECT_EQ(tree_text(fragment), "#(x y z)");
    EXPECT_EQ(x->getParentNode(), nullptr);
    EXPECT_EQ(x->getNextSibling(), nullptr);
    EXPECT_EQ(y->getParentNode(), fragment);
    EXPECT_EQ(y->getPreviousSibling(), x);
    // It leaves the list when it goes elsewhere.
    tree["c"]->appendChild(x);
    EXPECT_EQ(tree_text(fragment), "#(y z)");
    EXPECT_EQ(raised_by([&] { tree["a"]->insertBefore(fragment, tree["e"]); }),
              "DOM 8 ref child node not found");
    tree.parser.freeNode(y);
    EXPECT_EQ(tree_text(fragment), "#(z)");
    EXPECT_EQ(raised_by([&] { tree["a"]->insertBefore(fragment, tree["e"]); }),
              "DOM 8 ref child node not found");
    EXPECT_EQ(tree.drop(fragment->removeChild(fragment->getFirstChild()))->getNextSibling(),
              nullptr);
    EXPECT_EQ(tree.text(), "/(a(b(e) c(x)))");
}

TEST(Node, FragmentsAsChildren) {
    Tree tree("a('t' #(b #(c)) d)");
    Node* const outer = tree.drop(tree["a"]->getChildNodes()->item(1));
    Node* const inner = tree.drop(outer->getLastChild());
    for (Node* const place : {outer, inner, tree["c"]}) {
        EXPECT_EQ(raised_by([&] { place->appendChild(outer); }),
                  "DOM 3 child node is not acceptable");
        EXPECT_EQ(raised_by([&] { place->insertBefore(outer, place->getFirstChild()); }),
                  "DOM 3 child node is not acceptable");
        EXPECT_EQ(raised_by([&] { place->replaceChild(outer, place->getFirstChild()); }),
                  "DOM 3 new child node is not acceptable");
    }
    EXPECT_EQ(tree.text(), "/(a('t' #(b #(c)) d))");
    // Under a Text too. A fragment that is a child leaves its place, and one that is a child of
    // that fragment is emptied as well.
    EXPECT_EQ(tree["t"]->appendChild(outer), outer);
    EXPECT_EQ(tree.text(), "/(a('t'(b c) d))");
    EXPECT_EQ(tree_text(outer) + tree_text(inner), "##");
    EXPECT_EQ(outer->getParentNode(), nullptr);
    EXPECT_EQ(inner->getParentNode(), nullptr);
}

TEST(Node, NodesOfOtherDocuments) {
    Tree tree("a(b)");
    Tree other("x(y) ");
    Node* const y = other["y"];
    EXPECT_EQ(raised_by([&] { tree["a"]->appendChild(y); }),
              "DOM 4 child node document is different");
    EXPECT_EQ(raised_by([&] { tree["a"]->replaceChild(y, tree["b"]); }),
              "DOM 4 new child node document is different");
    EXPECT_EQ(raised_by([&] { tree["a"]->appendChild(other.document); }),
              "DOM 3 child node is not acceptable");
    EXPECT_EQ(other.text(), "/(x(y))");
    // insertBefore doesn't compare, nor does anything under a document or a document type.
    tree["a"]->insertBefore(y, tree["b"]);
    tree.document->appendChild(other["x"]);
    EXPECT_EQ(tree.text() + other.text(), "/(a(y b) x)/");
    EXPECT_EQ(y->getOwnerDocument(), other.document);
    other.drop(tree.document->replaceChild(y, tree["x"]));
    EXPECT_EQ(tree.text(), "/(a(b) y)");
}

TEST(Node, SiblingsWhileTheListChanges) {
    Tree tree("a(b c d)");
    Node* const a = tree["a"];
    EXPECT_EQ(tree["b"]->getNextSibling(), tree["c"]);
    Node* const first = a->insertBefore(tree.make("x"), tree["b"]);
    EXPECT_EQ(tree["c"]->getNextSibling(), tree["d"]);
    a->appendChild(tree["b"]);
    EXPECT_EQ(tree["d"]->getNextSibling(), tree["b"]);
    EXPECT_EQ(tree["b"]->getNextSibling(), nullptr);
    EXPECT_EQ(tree["d"]->getPreviousSibling(), tree["c"]);
    tree.parser.freeNode(a->removeChild(tree["c"]));
    EXPECT_EQ(tree["d"]->getPreviousSibling(), first);
    EXPECT_EQ(first->getPreviousSibling(), nullptr);
    EXPECT_EQ(a->getPreviousSibling(), nullptr);
    EXPECT_EQ(a->getFirstChild(), first);
    EXPECT_EQ(a->getLastChild(), tree["b"]);
}

TEST(Node, Normalize) {
    const struct {
        const char* before;
        const char* after;
    } cases[] = {
        {"a('ab' 'cd')", "a('abcd')"},
        {"a('a' - 'b' '')", "a('ab')"},
        {"a('')", "a('')"},
        {"a(- -)", "a(-)"},
        {"a('a' ='b' 'c' 'd' !'e' 'f' 'g')", "a('a' ='b' 'cd' !'e' 'fg')"},
        {"a('a' ='b' ='c' 'd')", "a('a' ='b' ='c' 'd')"},
        {"a(b('c' 'd') &e('f' 'g' h('i' 'j')) #('k' 'l'))", "a(b('cd') &e('fg' h('ij')) #('kl'))"},
    };
    for (const auto& test : cases) {
        Tree tree(test.before);
        tree.document->normalize();
        EXPECT_EQ(tree.text(), std::string("/(") + test.after + ')');
    }
}

TEST(Node, WhatNormalizeTakesOut) {
    Tree tree("a('ab' 'cd' 'ef' 'gh')");
    Node* const a = tree["a"];
    Node* const kept = tree["ab"];
    Node* const freed = tree["cd"];
    Node* const reused = tree["gh"];
    tree["ef"]->appendChild(tree.drop(tree.make("#(b('1' '2'))")));
    a->normalize();
    EXPECT_EQ(a->getFirstChild(), kept);
    EXPECT_EQ(tree_text(a), "a('abcdefgh')");
    EXPECT_EQ(tree_text(freed) + tree_text(reused), "'cd''gh'");
    EXPECT_EQ(freed->getParentNode(), nullptr);
    tree.parser.freeNode(freed);
    a->appendChild(reused);
    EXPECT_EQ(tree_text(a), "a('abcdefgh' 'gh')");
}

// Documents, document types and texts merge nothing themselves; an attribute does, and keeps its
// value.
TEST(Node, WhereNormalizeMerges) {
    Tree tree("a('t')");
    tree.document->appendChild(tree.drop(tree.make("#('x' 'y' b('1' '2'))")));
    tree["t"]->appendChild(tree.drop(tree.make("#('p' 'q' c('3' '4'))")));
    tree.document->normalize();
    EXPECT_EQ(tree.text(), "/(a('t'('p' 'q' c('34'))) 'x' 'y' b('12'))");

    Node* const attribute = tree.make_type(Node::ATTRIBUTE_NODE);
    for (const char* const text : {"'u'", "'v'"}) attribute->appendChild(tree.make(text));
    attribute->normalize();
    EXPECT_EQ(tree_text(attribute), "@x=-*('uv')");
    tree.parser.freeNode(attribute);

    Node* const doctype = tree.make("%d('x' 'y' b('1' '2'))");
    doctype->normalize();
    EXPECT_EQ(tree_text(doctype), "%d('x' 'y' b('12'))");
    tree.parser.freeNode(doctype);
}

TEST(Node, Clones) {
    const struct {
        const char* text;
        const char* flat;
    } cases[] = {
        {"a[x='1' {u}p:y='2'](b[z=''] 't' {v}c(!'d'))", "a[x='1' {u}p:y='2']"},
        {"{u}p:a('')", "{u}p:a"},
        {"'t'", "'t'"},
        {"-", "-"},
        {"=-", "=-"},
        {"='c'", "='c'"},
        {"!'c'", "!'c'"},
        {"?p'd'", "?p'd'"},
        {"?p-", "?p-"},
        {"&r(a('t'))", "&r"},
        {"#(a 't' b)", "#"},
        {"%d(!'c' ?p'd')", "%d"},
    };
    for (const auto& test : cases) {
        Tree tree("keep");
        Node* const node = tree.make(test.text);
        tree.document->getDocumentElement()->appendChild(tree.make("'s'"));
        for (const bool deep : {false, true}) {
            Node* const clone = node->cloneNode(deep);
            EXPECT_NE(clone, node);
            EXPECT_EQ(tree_text(clone), deep ? test.text : test.flat);
            EXPECT_EQ(clone->getParentNode(), nullptr);
            EXPECT_EQ(clone->getOwnerDocument(), node->getOwnerDocument());
            tree.parser.freeNode(clone);
        }
        EXPECT_EQ(tree_text(node), test.text);
        tree.parser.freeNode(node);
    }
}

TEST(Node, ClonesOfOtherTypes) {
    Tree tree("%d a[x='1'](b)");
    qvox::Attr* const x = tree.element("a")->getAttributeNode("x");
    x->setValue("2");
    EXPECT_EQ(x->cloneNode(true), x);
    EXPECT_EQ(tree_text(x), "@x='2'('2')");
    Node* const clone = tree["a"]->cloneNode(false);
    EXPECT_EQ(tree_text(clone), "a[x='2']");
    EXPECT_EQ(static_cast<qvox::Attr*>(clone->getAttributes()->item(0))->getOwnerElement(), clone);
    tree.parser.freeNode(clone);

    // A copy of a document is one, and its nodes still say the old one.
    auto* const copy = static_cast<qvox::Document*>(tree.document->cloneNode(true));
    EXPECT_EQ(tree_text(copy), "/(%d a[x='2'](b))");
    EXPECT_EQ(copy->getOwnerDocument(), nullptr);
    EXPECT_EQ(copy->getImplementation(), tree.document->getImplementation());
    EXPECT_EQ(copy->getDocumentElement()->getOwnerDocument(), tree.document);
    Node* const added = copy->createElement("c");
    EXPECT_EQ(raised_by([&] { copy->getDocumentElement()->appendChild(added); }),
              "DOM 4 child node document is different");
    tree.parser.freeNode(added);
    tree.parser.free(copy);

    for (const int type : {Node::ENTITY_NODE, Node::NOTATION_NODE}) {
        Node* const node = tree.make_type(type);
        if (type == Node::ENTITY_NODE) node->appendChild(tree.make("b('t')"));
        Node* const other = node->cloneNode(true);
        EXPECT_EQ(tree_text(other), type == Node::ENTITY_NODE ? "$e(b('t'))" : "~n");
        if (const auto* entity = dynamic_cast<qvox::Entity*>(other)) {
            EXPECT_EQ(
                quoted(entity->getPublicId() + entity->getSystemId() + entity->getNotationName()),
                "'psn'");
        }
        if (const auto* notation = dynamic_cast<qvox::Notation*>(other)) {
            EXPECT_EQ(quoted(notation->getPublicId() + notation->getSystemId()), "'ps'");
        }
        tree.parser.freeNode(other);
        tree.parser.freeNode(node);
    }
}

}  // namespace
}  // namespace qvox_test

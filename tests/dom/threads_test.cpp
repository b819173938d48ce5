// Two threads that read one tree. The preset tsan runs these tests under the thread sanitizer.
#include "support/threads.h"

#include <atomic>
#include <vector>

#include <gtest/gtest.h>

#include "support/tree_text.h"
#include "writer/written.h"

namespace qvox_test {
namespace {

using qvox::Document;
using qvox::Element;
using qvox::Node;

std::string source() {
    std::string text =
        "<!DOCTYPE r [<!ENTITY e 'v'><!ATTLIST b i ID #IMPLIED d CDATA 'x'>]><r xmlns:p='u'>";
    for (int i = 0; i < 50; ++i) {
        const std::string n = std::to_string(i);
        text += "<p:b i='" + n + "' p:n" + n + "='1'>t<p:c" + n + "/>u</p:b>";
    }
    return text + "</r>";
}

// All that can be read of a tree: each name and value is asked for the first time by both threads
// at once. The result list of a node is one, so each thread asks another node.
std::string read_all(Document* document, int which) {
    std::string all;
    qvox::NodeIterator* const iterator =
        document->createNodeIterator(document, qvox::NodeFilter::SHOW_ALL, nullptr, true);
    while (const Node* const node = iterator->nextNode()) {
        all += names_of(*node) + quoted(node->getNodeValue());
    }
    document->freeNodeIterator(iterator);
    Element* const root = document->getDocumentElement();
    for (Node* node = root->getLastChild(); node != nullptr; node = node->getPreviousSibling()) {
        all += static_cast<const Element*>(node)->hasAttributeNS("u", "n7") ? '7' : '-';
    }
    auto* const context = static_cast<Element*>(root->getChildNodes()->item(which));
    all += std::to_string(context->getElementsByTagNameNS("u", "*")->getLength());
    qvox::NodeList* const list =
        which == 0 ? root->getElementsByTagName("p:b") : document->getElementsByTagName("p:b");
    all += items_text(*list);
    qvox::DOMParser().free(list);
    all += tree_text(document->getElementById("49"));
    Node* const clone = root->cloneNode(true);
    all += tree_text(clone);
    qvox::DOMParser().freeNode(clone);
    return all + tree_text(document) + in_memory(document) +
           plain(document->getDoctype()->getInternalSubset());
}

TEST(Threads, ReadOneTree) {
    const Tree again(source());
    const Tree tree(source());
    const std::string all = read_all(again.document, 0);
    EXPECT_EQ(all, read_all(again.document, 1));
    in_two_threads([&](int which) {
        for (int i = 0; i < 5; ++i) EXPECT_EQ(read_all(tree.document, which), all);
    });
}

// The lock of the document orders changes of the tree, searches, and the end of nodes that the
// document knows.
TEST(Threads, SearchWhileAnotherChanges) {
    Tree tree("r(a(b) 't' 'u' 't' 'u')");
    Document* const document = tree.document;
    Node* const root = document->getDocumentElement();
    std::vector<Node*> loose;
    std::vector<Node*> texts;
    for (int i = 0; i < 100; ++i) {
        loose.push_back(tree.make("a(b)"));
        texts.push_back(root->appendChild(tree.make("'v'")));
        static_cast<Element*>(loose.back())->getElementsByTagName("b");
    }
    in_two_threads([&](int which) {
        for (std::size_t i = 0; i < loose.size(); ++i) {
            if (which == 0) {
                document->insertBefore(tree.make("!'c'"), root);
                if (i % 2 == 0) root->appendChild(loose[i]);
                if (i % 2 != 0) qvox::DOMParser().freeNode(loose[i]);
                if (i == 50) root->normalize();
                if (i > 50) qvox::DOMParser().freeNode(texts[i]);
            } else {
                EXPECT_GT(document->getElementsByTagName("a")->getLength(), 0);
                EXPECT_EQ(root->getNextSibling(), nullptr);
                for (Node* node = root; node != nullptr; node = node->getPreviousSibling()) {
                }
                EXPECT_EQ(document->getElementById("i"), nullptr);
                static_cast<Element*>(root->getFirstChild())->normalize();
            }
        }
    });
    EXPECT_EQ(document->getElementsByTagName("b")->getLength(), 51);
}

}  // namespace
}  // namespace qvox_test

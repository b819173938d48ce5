// Nodes that stand in no document's child list have a form too.
#include <vector>

#include <gtest/gtest.h>

#include "dom/document.h"
#include "dom/document_type.h"
#include "dom/dom_implementation.h"
#include "dom/small_nodes.h"
#include "text/wide.h"
#include "writer/node_writer.h"

namespace qvox {
namespace {

Xstring written(Node* node) {
    std::vector<Unit> buffer(100);
    MemoryTarget target(buffer.data(), buffer.size());
    OutputSink sink(target, OutputSink::BARE);
    NodeWriter writer(sink, false);
    writer.write(node);
    sink.flush();
    target.finish();
    return buffer.data();
}

TEST(SingleNodes, HaveTheirForm) {
    DocumentImpl document(&defaultImplementation);
    const Xstring name("n");
    const Xstring id("i");
    const Xstring notation("m");
    const Unit* const none = nullptr;
    EntityImpl plain(name.data(), none, none, none, &document);
    EntityImpl entity(name.data(), none, id.data(), notation.data(), &document);
    EntityImpl both(name.data(), name.data(), id.data(), none, &document);
    NotationImpl declared(name.data(), id.data(), none, &document);
    EXPECT_TRUE(written(&plain) == "<!ENTITY n>");
    EXPECT_TRUE(written(&entity) == "<!ENTITY n SYSTEM \"i\">");
    EXPECT_TRUE(written(&both) == "<!ENTITY n PUBLIC \"n\" \"i\">");
    EXPECT_TRUE(written(&declared) == "<!NOTATION n PUBLIC \"i\">");

    Element* const element = document.createElement("e");
    element->setAttribute("a", "'");
    element->appendChild(document.createTextNode("x"));
    document.appendChild(document.createComment("behind"));
    document.insertBefore(element, document.getFirstChild());
    EXPECT_TRUE(written(element->getAttributeNode("a")) == " a=\"&apos;\"");
    EXPECT_TRUE(written(element) == "<e a=\"&apos;\">x</e>");
    EXPECT_TRUE(written(element->getFirstChild()) == "x");
    EXPECT_TRUE(written(&document) == "<e a=\"&apos;\">x</e><!--behind-->");

    ElementDecl hidden(name.data(), id.data());
    EXPECT_TRUE(written(&hidden) == "");
}

}  // namespace
}  // namespace qvox

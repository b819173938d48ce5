// Cuts the first line out of an order's remarks and moves it to their end, into an element.
#include <cstdio>

#include <qvox/qvox.h>

int main(int argc, char** argv) {
    qvox::DOMParser parser;
    try {
        qvox::Document* order = parser.parse(argc == 2 ? argv[1] : "");
        qvox::NodeList* all = order->getElementsByTagName(u"備考");
        qvox::Node* remarks = all->item(all->getLength() - 1);  // those of the whole order
        qvox::Node* text = remarks != nullptr ? remarks->getFirstChild() : nullptr;
        const unsigned lineEnd = text != nullptr ? text->getNodeValue().find("\n") : ~0U;
        if (lineEnd == ~0U) throw qvox::QVOXException(qvox::QVOXException::SYNTAX_ERR, "one line");

        qvox::Range* range = order->createRange();
        range->setStart(text, 0);
        range->setEnd(text, static_cast<int>(lineEnd) + 1);
        std::printf("moved: %s", range->toString().utf8().c_str());
        qvox::DocumentFragment* line = range->extractContents();

        // A range stays where it is when the tree changes: it is set anew for each step.
        range->setEnd(remarks, remarks->getChildNodes()->getLength());
        range->collapse(false);
        range->insertNode(line);
        range->selectNode(remarks->getLastChild());
        range->surroundContents(order->createElement(u"追記"));

        range->selectNodeContents(remarks);
        std::printf("now: %s", range->toString().utf8().c_str());
        parser.freeNode(line);  // the fragment, which is empty now
        order->freeRange(range);
        parser.free(order);
    } catch (const qvox::QVOXException& exception) {
        std::fprintf(stderr, "error %d\n", exception.getCode());  // the library said more
        return 1;
    }
}

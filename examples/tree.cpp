// Raises the prices of an order by a tenth, keeps the old ones, and prints the order's entries.
#include <cstdio>
#include <cstdlib>
#include <string>

#include <qvox/qvox.h>

int main(int argc, char** argv) {
    qvox::DOMParser parser;
    try {
        qvox::Document* order = parser.parse(argc == 2 ? argv[1] : "");

        // Texts are UTF-16. Narrow text that goes in would be taken for Shift_JIS.
        qvox::NodeList* prices = order->getElementsByTagName(u"単価");
        for (int i = 0; i < prices->getLength(); ++i) {
            auto* price = static_cast<qvox::Element*>(prices->item(i));
            qvox::Node* text = price->getFirstChild();
            if (text == nullptr) continue;
            price->setAttribute(u"旧", text->getNodeValue());
            const int amount = std::atoi(text->getNodeValue().utf8().c_str());
            text->setNodeValue(std::to_string(amount + amount / 10).c_str());
        }

        qvox::TreeWalker* walker =
            order->createTreeWalker(order, qvox::NodeFilter::SHOW_TEXT, nullptr, false);
        while (const qvox::Node* text = walker->nextNode()) {
            const auto* element = static_cast<const qvox::Element*>(text->getParentNode());
            if (element->getFirstChild() != element->getLastChild()) continue;  // blanks in between
            std::printf("%s: %s", element->getNodeName().utf8().c_str(),
                        text->getNodeValue().utf8().c_str());
            const qvox::Xstring& old = element->getAttribute(u"旧");
            if (!old.isNull()) std::printf(" (%s)", old.utf8().c_str());
            std::printf("\n");
        }
        order->freeTreeWalker(walker);
        parser.free(order);  // with the list
    } catch (const qvox::QVOXException& exception) {
        std::fprintf(stderr, "error %d\n", exception.getCode());  // the library said more
        return 1;
    }
}

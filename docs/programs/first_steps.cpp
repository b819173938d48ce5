// Prints what was ordered, and how many of each.
#include <cstdio>

#include <qvox/qvox.h>

int main() {
    qvox::DOMParser parser;
    try {
        qvox::Document* order = parser.parse("tea.xml");
        qvox::NodeList* items = order->getElementsByTagName(u"品");
        for (int i = 0; i < items->getLength(); ++i) {
            const auto* item = static_cast<const qvox::Element*>(items->item(i));
            const qvox::Node* name = item->getFirstChild();  // null for <品/>
            std::printf("%s: %s\n", name != nullptr ? name->getNodeValue().utf8().c_str() : "?",
                        item->getAttribute(u"数量").utf8().c_str());
        }
        parser.free(order);  // with the list
    } catch (const qvox::QVOXException& exception) {
        std::printf("%s\n", exception.getMessage().utf8().c_str());
        return 1;
    }
}

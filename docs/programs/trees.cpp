// Adds an item to an order, takes another out, and writes the order in EUC-JP.
#include <cstdio>

#include <qvox/qvox.h>

int main() {
    qvox::DOMParser parser;
    try {
        qvox::Document* order = parser.parse("tea.xml");
        qvox::Element* root = order->getDocumentElement();

        // A node that was made is the program's, until it is attached.
        qvox::Element* item = order->createElement(u"品");
        item->setAttribute(u"数量", u"2");
        item->appendChild(order->createTextNode(u"番茶"));
        root->appendChild(item);

        // A node that was taken out is the program's again: attach it elsewhere, or free it.
        qvox::Node* first = order->getElementsByTagName(u"品")->item(0);
        parser.freeNode(root->removeChild(first));

        parser.write(order, "tea-euc.xml", "EUC-JP");
        parser.free(order);

        qvox::Document* again = parser.parse("tea-euc.xml");
        qvox::NodeList* items = again->getElementsByTagName(u"品");
        for (int i = 0; i < items->getLength(); ++i) {
            std::printf("%s\n", items->item(i)->getFirstChild()->getNodeValue().utf8().c_str());
        }
        std::printf("%s\n", again->getFirstChild()->getNodeValue().utf8().c_str());
        parser.free(again);
    } catch (const qvox::QVOXException& exception) {
        std::printf("%s\n", exception.getMessage().utf8().c_str());
        return 1;
    }
}

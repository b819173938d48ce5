// Adds the unit prices of an order: examples/easy_sum.cpp in the classic interface.
#include <cstdio>
#include <string>

#include <qvox/qvox.h>

static std::string text_of(const qvox::Node* element) {
    std::string text;
    for (const qvox::Node* child = element->getFirstChild(); child != nullptr;
         child = child->getNextSibling()) {
        text += child->getNodeValue().utf8();
    }
    return text;
}

int main(int, char** argv) {
    int total = 0;
    qvox::DOMParser parser;
    qvox::Document* order = nullptr;
    try {
        order = parser.parse(argv[1]);
        const qvox::NodeList* prices = order->getElementsByTagName(u"単価");
        for (int i = 0; i < prices->getLength(); ++i) total += std::stoi(text_of(prices->item(i)));
    } catch (const qvox::QVOXException& exception) {
        std::fprintf(stderr, "error %d\n", exception.getCode());
        return 1;
    }
    parser.free(order);
    std::printf("%d\n", total);
}

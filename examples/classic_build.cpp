// Writes a small order in Shift_JIS: examples/easy_build.cpp in the classic interface.
#include <qvox/qvox.h>

static void add_text(qvox::Document* order, qvox::Node* parent, const char16_t* name,
                     const char16_t* text) {
    qvox::Element* element = order->createElement(name);
    parent->appendChild(element);
    element->appendChild(order->createTextNode(text));
}

int main(int, char** argv) {
    qvox::DOMParser parser;
    qvox::Document* order = parser.createDocument();
    order->appendChild(
        order->createProcessingInstruction("xml", "version=\"1.0\" encoding=\"Shift_JIS\""));
    qvox::Element* root = order->createElement(u"注文書");
    order->appendChild(root);
    qvox::Element* line = order->createElement(u"行");
    line->setAttribute(u"番号", u"1");
    root->appendChild(line);
    add_text(order, line, u"品名", u"深溝玉軸受 6201ZZ");
    add_text(order, line, u"備考", u"髙橋様 × 2");
    parser.write(order, argv[1], "Shift_JIS");
    parser.free(order);
}

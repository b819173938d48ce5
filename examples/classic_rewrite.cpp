// Says in an order that its prices are in yen, and writes it in UTF-16: examples/easy_rewrite.cpp
// in the classic interface.
#include <cstdio>

#include <qvox/qvox.h>

// Frees the document however the program goes on.
struct Owned {
    qvox::DOMParser& parser;
    qvox::Document* document;

    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    Owned(qvox::DOMParser& with, const char* file) : parser(with), document(with.parse(file)) {}
    ~Owned() { parser.free(document); }
};

int main(int, char** argv) {
    qvox::DOMParser parser;
    try {
        const Owned order(parser, argv[1]);
        const qvox::NodeList* prices = order.document->getElementsByTagName(u"単価");
        for (int i = 0; i < prices->getLength(); ++i) {
            static_cast<qvox::Element*>(prices->item(i))->setAttribute(u"通貨", u"円");
        }
        parser.write(order.document, argv[2], "UTF-16");
    } catch (const qvox::QVOXException& exception) {
        const qvox::ErrorPlace place = qvox::takeErrorPlace();
        std::fprintf(stderr, "%d:%d: %s\n", place.line, place.column,
                     exception.getMessage().utf8().c_str());
        return 1;
    }
}

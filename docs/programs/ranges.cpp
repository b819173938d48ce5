// Cuts a stretch out of a text and puts it into an element of its own.
#include <cstdio>

#include <qvox/qvox.h>

int main() {
    const qvox::Xstring source = u"<文>在庫がないときは代替品を。</文>";
    qvox::DOMParser parser;
    try {
        qvox::Document* document = parser.parse(source.unicode_str());
        qvox::Node* text = document->getDocumentElement()->getFirstChild();

        qvox::Range* range = document->createRange();
        range->setStart(text, 3);  // offsets count 16-bit units
        range->setEnd(text, 8);
        std::printf("%s\n", range->toString().utf8().c_str());

        range->surroundContents(document->createElement(u"条件"));
        // The text of a range has the opening tags of its elements in it.
        range->selectNodeContents(document->getDocumentElement());
        std::printf("%s\n", range->toString().utf8().c_str());

        document->freeRange(range);
        parser.free(document);
    } catch (const qvox::QVOXException& exception) {
        std::printf("%s\n", exception.getMessage().utf8().c_str());
        return 1;
    }
}

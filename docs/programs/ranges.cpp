// Cuts a stretch out of a text and puts it into an element of its own.
#include <cstdio>

#include <qvox/qvox.h>

#include "text.h"

int main() {
    std::u16string source = u"<文>在庫がないときは代替品を。</文>";
    qvox::DOMParser parser;
    try {
        qvox::Document* document = parser.parse(reinterpret_cast<unsigned short*>(source.data()));
        qvox::Node* text = document->getDocumentElement()->getFirstChild();

        qvox::Range* range = document->createRange();
        range->setStart(text, 3);  // offsets count 16-bit units
        range->setEnd(text, 8);
        std::printf("%s\n", utf8(range->toString()).c_str());

        range->surroundContents(document->createElement(wide(u"条件")));
        // The text of a range has the opening tags of its elements in it.
        range->selectNodeContents(document->getDocumentElement());
        std::printf("%s\n", utf8(range->toString()).c_str());

        document->freeRange(range);
        parser.free(document);
    } catch (const qvox::QVOXException& exception) {
        std::printf("%s\n", utf8(exception.getMessage()).c_str());
        return 1;
    }
}

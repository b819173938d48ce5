// Prints the names of a document's elements, each indented by its depth.
#include <cstdio>

#include <qvox/qvox.h>

class Outline : public qvox::DefaultHandler {
    int depth = 0;

    void startElement(const qvox::Xstring&, const qvox::Xstring&, const qvox::Xstring& qName,
                      const qvox::Attributes&) override {
        std::printf("%*s%s\n", 2 * depth++, "", qName.utf8().c_str());
    }
    void endElement(const qvox::Xstring&, const qvox::Xstring&, const qvox::Xstring&) override {
        --depth;
    }
    // The library prints the message itself; the exception that ends the parse comes next.
    void error(const qvox::SAXParseException& place) override {
        std::fprintf(stderr, "line %d, column %d: ", place.getLineNumber(),
                     place.getColumnNumber());
    }
};

int main(int argc, char** argv) {
    Outline outline;
    qvox::SAXParser parser;
    parser.setContentHandler(&outline);
    parser.setErrorHandler(&outline);
    try {
        parser.parse(argc == 2 ? argv[1] : "");
    } catch (const qvox::QVOXException& exception) {
        std::fprintf(stderr, "error %d\n", exception.getCode());
        return 1;
    }
}

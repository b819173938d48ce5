// A program like a user's, built against an installed qvox: prints the elements and texts of the
// documents that are named, and the code of the exception where one can't be parsed.

#include <cstdio>

#include <qvox/qvox.h>

namespace {

class Printer : public qvox::DefaultHandler {
public:
    void startElement(const qvox::Xstring& uri, const qvox::Xstring& localName,
                      const qvox::Xstring&, const qvox::Attributes& attributes) override {
        std::printf("start {%s}%s", uri.utf8().c_str(), localName.utf8().c_str());
        for (int i = 0; i < attributes.getLength(); ++i) {
            std::printf(" %s=%s", attributes.getQName(i).utf8().c_str(),
                        attributes.getValue(i).utf8().c_str());
        }
        std::printf("\n");
    }

    void endElement(const qvox::Xstring&, const qvox::Xstring&,
                    const qvox::Xstring& qName) override {
        std::printf("end %s\n", qName.utf8().c_str());
    }

    void characters(const qvox::Xstring& text) override {
        std::printf("text %s\n", text.utf8().c_str());
    }
};

}  // namespace

int main(int argc, char** argv) {
    Printer printer;
    qvox::SAXParser parser;
    parser.setContentHandler(&printer);
    for (int i = 1; i < argc; ++i) {
        try {
            parser.parse(argv[i]);
        } catch (const qvox::QVOXException& exception) {
            std::printf("exception %d\n", exception.getCode());
        }
    }
    return 0;
}

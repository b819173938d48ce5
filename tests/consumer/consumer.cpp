// A program like a user's, built against an installed qvox: prints the elements and texts of the
// documents that are named, and the code of the exception where one can't be parsed.

#include <cstdio>
#include <string>

#include <qvox/qvox.h>

namespace {

std::string printable(const qvox::Xstring& text) {
    std::string result;
    for (int i = 0; i < text.length(); ++i) {
        const unsigned short unit = text.data()[i];
        if (unit >= 0x20 && unit < 0x7f) {
            result += static_cast<char>(unit);
        } else {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned int>(unit));
            result += escaped;
        }
    }
    return result;
}

class Printer : public qvox::DefaultHandler {
public:
    void startElement(const qvox::Xstring& uri, const qvox::Xstring& localName,
                      const qvox::Xstring&, const qvox::Attributes& attributes) override {
        std::printf("start {%s}%s", printable(uri).c_str(), printable(localName).c_str());
        for (int i = 0; i < attributes.getLength(); ++i) {
            std::printf(" %s=%s", printable(attributes.getQName(i)).c_str(),
                        printable(attributes.getValue(i)).c_str());
        }
        std::printf("\n");
    }

    void endElement(const qvox::Xstring&, const qvox::Xstring&,
                    const qvox::Xstring& qName) override {
        std::printf("end %s\n", printable(qName).c_str());
    }

    void characters(const qvox::Xstring& text) override {
        std::printf("text %s\n", printable(text).c_str());
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

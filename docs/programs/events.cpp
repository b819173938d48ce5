// Prints a document's elements, attributes, texts and comments as they come.
#include <cstdio>
#include <string>

#include <qvox/qvox.h>

class Printer : public qvox::DefaultHandler, public qvox::LexicalHandler {
    void startElement(const qvox::Xstring&, const qvox::Xstring&, const qvox::Xstring& qName,
                      const qvox::Attributes& attributes) override {
        std::printf("start %s\n", qName.utf8().c_str());
        for (int i = 0; i < attributes.getLength(); ++i) {
            std::printf("  %s = %s\n", attributes.getQName(i).utf8().c_str(),
                        attributes.getValue(i).utf8().c_str());
        }
    }
    void endElement(const qvox::Xstring&, const qvox::Xstring&,
                    const qvox::Xstring& qName) override {
        std::printf("end %s\n", qName.utf8().c_str());
    }
    void characters(const qvox::Xstring& text) override {
        // White space between elements comes here too.
        if (text.utf8().find_first_not_of(" \n") == std::string::npos) return;
        std::printf("text %s\n", text.utf8().c_str());
    }

    void comment(const qvox::Xstring& text) override {
        std::printf("comment%s\n", text.utf8().c_str());
    }
    void startCDATA() override {}
    void endCDATA() override {}
    void startDTD(const qvox::Xstring&, const qvox::Xstring&, const qvox::Xstring&) override {}
    void endDTD() override {}
    void startEntity(const qvox::Xstring&) override {}
    void endEntity(const qvox::Xstring&) override {}
};

int main() {
    Printer printer;
    qvox::SAXParser parser;
    parser.setContentHandler(&printer);
    // A property takes a pointer of exactly its type.
    qvox::LexicalHandler* lexical = &printer;
    parser.setProperty(qvox::PROPERTY_LEXICAL_HANDLER, lexical);
    try {
        parser.parse("tea.xml");
    } catch (const qvox::QVOXException& exception) {
        std::printf("%s\n", exception.getMessage().utf8().c_str());
        return 1;
    }
}

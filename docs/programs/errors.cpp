// Prints the warnings and the error of a document, with their places.
#include <cstdio>

#include <qvox/qvox.h>

class Places : public qvox::DefaultHandler {
    static void print(const char* kind, const qvox::SAXParseException& report) {
        std::printf("%s:%d:%d: %s %d: %s\n", report.getSystemId().utf8().c_str(),
                    report.getLineNumber(), report.getColumnNumber(), kind, report.getCode(),
                    report.getMessage().utf8().c_str());
    }
    void warning(const qvox::SAXParseException& report) override { print("warning", report); }
    void error(const qvox::SAXParseException& report) override { print("error", report); }
};

int main() {
    Places places;
    qvox::SAXParser parser;
    parser.setErrorHandler(&places);
    for (const char* name : {"broken.xml", "tea.xml", "nothing.xml"}) {
        try {
            parser.parse(name);
            std::printf("%s: good\n", name);
        } catch (const qvox::QVOXException& exception) {
            // Whatever ended the parse, it is of this class and has the code of what it was.
            const bool isMissing = exception.getCode() == qvox::QVOXException::FILE_OPEN_ERR;
            std::printf("%s: %s\n", name, isMissing ? "no such file" : "refused");
        }
    }
}

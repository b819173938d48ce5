// What a test sees of a parse: its events, its exception, and its lines on standard output.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include <qvox/qvox.h>

namespace qvox_test {

// A text as UTF-8 in single quotes, a null text as a dash. Escaped are \\ \' \n \r \t; every other
// control character and each half of a surrogate pair without the other is \u{hex}.
std::string quoted(const qvox::Xstring& text);

// Writes each event as a line: its name, then its texts as by quoted(), in the order of the
// handler's arguments.
//     startElement 'uri' 'local' 'qName' ['uri' 'local' 'qName' 'type' 'value'] [...]
//     characters 'text'             characters bulk 'text'
//     error 6 3:14 'doc.xml : parse error (x) at line 3, col 14'     (code line:column message)
class Recorder : public qvox::ContentHandler,
                 public qvox::DTDHandler,
                 public qvox::EntityResolver,
                 public qvox::ErrorHandler,
                 public qvox::LexicalHandler,
                 public qvox::DeclHandler {
public:
    using Text = qvox::Xstring;
    using Exception = qvox::SAXParseException;

    Recorder() = default;
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;
    virtual ~Recorder() = default;

    // Makes this all six handlers of the parser.
    void attach(qvox::SAXParser& parser);

    // Runs `action` behind each event whose line begins with `beginning`.
    void when(const std::string& beginning, const std::function<void()>& action) {
        awaited = beginning;
        reaction = action;
    }

    std::string events;

    void characters(const Text& text) override {
        line(text.isBulk() ? "characters bulk" : "characters", {&text});
    }
    void endDocument() override { line("endDocument", {}); }
    void endElement(const Text& uri, const Text& local, const Text& qName) override {
        line("endElement", {&uri, &local, &qName});
    }
    void endPrefixMapping(const Text& prefix) override { line("endPrefixMapping", {&prefix}); }
    void ignorableWhiteSpace(const Text& text) override { line("ignorableWhiteSpace", {&text}); }
    void processingInstruction(const Text& target, const Text& data) override {
        line("processingInstruction", {&target, &data});
    }
    void setDocumentLocator(const qvox::Locator&) override { line("setDocumentLocator", {}); }
    void skippedEntity(const Text& name) override { line("skippedEntity", {&name}); }
    void startDocument() override { line("startDocument", {}); }
    void startElement(const Text& uri, const Text& local, const Text& qName,
                      const qvox::Attributes& attributes) override;
    void startPrefixMapping(const Text& prefix, const Text& uri) override {
        line("startPrefixMapping", {&prefix, &uri});
    }

    void notationDecl(const Text& name, const Text& publicId, const Text& systemId) override {
        line("notationDecl", {&name, &publicId, &systemId});
    }
    void unparsedEntityDecl(const Text& name, const Text& publicId, const Text& systemId,
                            const Text& notation) override {
        line("unparsedEntityDecl", {&name, &publicId, &systemId, &notation});
    }

    qvox::InputSource resolveEntity(const Text& publicId, const Text& systemId) override {
        line("resolveEntity", {&publicId, &systemId});
        return {};
    }

    void error(const Exception& exception) override { report("error", exception); }
    void fatalError(const Exception& exception) override { report("fatalError", exception); }
    void warning(const Exception& exception) override { report("warning", exception); }

    void comment(const Text& text) override { line("comment", {&text}); }
    void endCDATA() override { line("endCDATA", {}); }
    void endDTD() override { line("endDTD", {}); }
    void endEntity(const Text& name) override { line("endEntity", {&name}); }
    void startCDATA() override { line("startCDATA", {}); }
    void startDTD(const Text& name, const Text& publicId, const Text& systemId) override {
        line("startDTD", {&name, &publicId, &systemId});
    }
    void startEntity(const Text& name) override { line("startEntity", {&name}); }

    void attributeDecl(const Text& element, const Text& attribute, const Text& type,
                       const Text& valueDefault, const Text& value) override {
        line("attributeDecl", {&element, &attribute, &type, &valueDefault, &value});
    }
    void elementDecl(const Text& name, const Text& model) override {
        line("elementDecl", {&name, &model});
    }
    void externalEntityDecl(const Text& name, const Text& publicId, const Text& systemId) override {
        line("externalEntityDecl", {&name, &publicId, &systemId});
    }
    void internalEntityDecl(const Text& name, const Text& value) override {
        line("internalEntityDecl", {&name, &value});
    }

private:
    void line(std::string event, const std::vector<const Text*>& texts);
    void report(const std::string& event, const Exception& exception);

    std::string awaited;
    std::function<void()> reaction;
};

struct Outcome {
    std::string events;   // of the recorder
    int code = 0;         // of the exception; 0 for an accepted document
    std::string message;  // of the exception, in UTF-8
    std::string output;   // what went to standard output, byte for byte (Shift_JIS)
    std::string type;     // what toString() of the exception gave, as by quoted()
};

struct File {
    std::string name;
    std::string bytes;
};

struct Options {
    bool namespaces = true;
    bool namespacePrefixes = false;
    std::vector<File> files = {};  // written beside the document
    Recorder* recorder = nullptr;  // instead of a plain one
};

// The tests of a binary run in an empty folder of their own, which is the working directory: files
// that they write and parse have names without a folder.
void write_file(const std::string& name, const std::string& bytes);
std::string read_file(const std::string& name);

std::ptrdiff_t open_descriptors();

// The lines in one, joined by "; ".
std::string joined(const std::string& lines);

// Runs `action` and says what it wrote to standard output.
std::string output_of(const std::function<void()>& action);

// Runs `parse` with standard output captured, and takes its exception, which must be of the class
// QVOXException itself; others pass through. `recorder` may be null.
Outcome observe(const std::function<void()>& parse, const Recorder* recorder = nullptr);

// Parses the bytes as the file "doc.xml".
Outcome parse_bytes(const std::string& bytes, const Options& options = {});

// Parses a file that is there.
Outcome parse_file(const std::string& name, const Options& options = {});

}  // namespace qvox_test

// The ways in which DOMParser writes a document. The tree is only read: where the XML declaration
// has to name another encoding, the node writer is told what to write in its place.
#include <memory>
#include <optional>
#include <utility>

#include <climits>

#include <qvox/parser.h>

#include "dom/document.h"
#include "platform/byte_sink.h"
#include "runtime/report.h"
#include "text/wide.h"
#include "writer/node_writer.h"
#include "writer/output_sink.h"
#include "writer/output_target.h"
#include "writer/xml_declaration.h"

namespace qvox {

namespace {

constexpr Unit BYTE_ORDER_MARK = 0xFEFF;

void report_failure(const char* message) {
    qvox_report(REPORT_ERROR, QVOXException::FILE_WRITE_ERR, "%s", message);
}

void refuse_null(const Document* document) {
    if (document == nullptr) report_failure("no document to write");
}

std::unique_ptr<ByteSink> open_output(const char* fileName) {
    std::unique_ptr<ByteSink> file = ByteSink::open(fileName);
    if (file == nullptr) {
        qvox_report(REPORT_ERROR, QVOXException::FILE_OPEN_ERR, "file (%s) cannot open",
                    fileName != nullptr ? fileName : "(null)");
    }
    return file;
}

// The XML declaration of a document. A document that has none is written without.
class Declaration {
public:
    explicit Declaration(const Document& document)
        : node(static_cast<const DocumentImpl&>(document).getXmlDeclaration()) {
        if (node != nullptr) declared = declared_encoding(node->getData());
    }

    // Null where there is none.
    const Xstring& encoding() const { return declared.name; }

    // Has it name another encoding in what is written.
    void rename(const Xstring& name) {
        if (node != nullptr) data = with_encoding(node->getData(), declared, name);
    }

    void applyTo(NodeWriter& writer) const {
        if (data) writer.replaceData(node, *data);
    }

private:
    const ProcessingInstruction* node;
    DeclaredEncoding declared;
    std::optional<Xstring> data;
};

void write_file(Document* document, const Declaration& declaration, std::unique_ptr<ByteSink> file,
                EncodingId encoding) {
    FileTarget target(std::move(file), encoding);
    OutputSink sink(target, OutputSink::WITH_CR);
    if (encoding == UTF16) sink.unit(BYTE_ORDER_MARK);
    NodeWriter writer(sink, false);
    declaration.applyTo(writer);
    writer.write(document);
    sink.flush();
    target.finish();
}

void write_standard_output(Document* document) {
    FileTarget target(ByteSink::standardOutput(), osEncoding);
    OutputSink sink(target, OutputSink::WITH_CR);
    NodeWriter writer(sink, true);
    writer.write(document);
    writer.endLine();
    sink.flush();
    target.finish();
}

// Returns the size of the whole text with its terminator, in units.
std::size_t write_memory(Document* document, const Declaration& declaration, Unit* buffer,
                         std::size_t capacity) {
    MemoryTarget target(buffer, capacity);
    OutputSink sink(target, OutputSink::BARE);
    NodeWriter writer(sink, false);
    declaration.applyTo(writer);
    writer.write(document);
    sink.flush();
    return target.finish();
}

}  // namespace

void DOMParser::write(Document* document, const char* fileName) {
    refuse_null(document);
    if (fileName == nullptr) {
        write_standard_output(document);
        return;
    }
    std::unique_ptr<ByteSink> file = open_output(fileName);
    const Declaration declaration(*document);
    write_file(document, declaration, std::move(file), encoding_id(declaration.encoding()));
}

void DOMParser::write(Document* document, const char* fileName, const char* encoding) {
    refuse_null(document);
    std::unique_ptr<ByteSink> file = open_output(fileName);
    Declaration declaration(*document);
    const Xstring name(encoding != nullptr ? Xstring(encoding) : declaration.encoding());
    if (encoding != nullptr && declaration.encoding() != encoding) declaration.rename(name);
    write_file(document, declaration, std::move(file), encoding_id(name));
}

void DOMParser::write(Document* document, unsigned short* buffer, int* length) {
    refuse_null(document);
    if (length == nullptr) {
        if (buffer != nullptr) report_failure("no length of the buffer");
        return;
    }
    Declaration declaration(*document);
    if (wide_narrow_casecompare(declaration.encoding().data(), "UTF-16") != 0) {
        declaration.rename("UTF-16");
    }
    constexpr std::size_t UNIT = sizeof *buffer;
    const std::size_t capacity = *length > 0 ? static_cast<std::size_t>(*length) / UNIT : 0;
    const std::size_t needed = write_memory(document, declaration, buffer, capacity);
    if (buffer != nullptr) return;
    if (needed > INT_MAX / UNIT) report_failure("document too large for a buffer");
    *length = static_cast<int>(needed * UNIT);
}

}  // namespace qvox

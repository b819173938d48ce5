#include "writer/declaration_writer.h"

#include "dom/declarations.h"

namespace qvox {

namespace {

void write_quoted(const Xstring& value, OutputSink& sink) {
    sink.markup("\"");
    sink.text(value);
    sink.markup("\"");
}

}  // namespace

void write_external_id(const Xstring& publicId, const Xstring& systemId, OutputSink& sink) {
    if (!publicId.isNull()) {
        sink.markup(" PUBLIC ");
        write_quoted(publicId, sink);
    }
    if (systemId.isNull()) return;
    sink.markup(publicId.isNull() ? " SYSTEM " : " ");
    write_quoted(systemId, sink);
}

void write_document_type(DocumentTypeImpl& documentType, OutputSink& sink,
                         Indentation& indentation) {
    indentation.breakLine();
    sink.markup("<!DOCTYPE ");
    sink.text(documentType.getName());
    write_external_id(documentType.getPublicId(), documentType.getSystemId(), sink);
    sink.markup(" [");
    indentation.open();
    for (const Node* node = documentType.getDeclarations().front(); node != nullptr;
         node = NodeLinks::next(node)) {
        indentation.breakLine();
        sink.text(declaration_text(static_cast<const DeclNode&>(*node)));
        sink.markup(">");
    }
    indentation.endLine();
    sink.markup("]");
    indentation.close();
    sink.markup(">");
}

}  // namespace qvox

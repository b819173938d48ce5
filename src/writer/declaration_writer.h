// The document type declaration.
#pragma once

#include "dom/document_type.h"
#include "writer/indentation.h"
#include "writer/output_sink.h"

namespace qvox {

// Writes the declaration with all declarations of both subsets between its brackets. The children
// of the node, comments and processing instructions, are not written.
void write_document_type(DocumentTypeImpl& documentType, OutputSink& sink,
                         Indentation& indentation);

// Writes the identifiers with their keyword, as far as they aren't null. Values stand in double
// quotes as they are.
void write_external_id(const Xstring& publicId, const Xstring& systemId, OutputSink& sink);

}  // namespace qvox

/// \file
/// The kinds of documents that are measured.
///
/// Generation is deterministic: the same kind and size give the same bytes on every machine.
#ifndef QVOX_BENCH_DOCUMENT_KINDS_H
#define QVOX_BENCH_DOCUMENT_KINDS_H

#include <string>

#include "document_builder.h"
#include "encodings.h"

namespace bench {

/// A sort of document, by the name that the tables show.
struct DocumentKind {
    const char* name;
    Encoding encoding;
    /// Fills the builder until the document has about `size` bytes.
    void (*generate)(DocumentBuilder& builder, std::size_t size);
    bool isSmall = false;
    /// Whether the other libraries read its file too, instead of bytes in memory.
    bool allReadTheFile = false;
};

/// Raises std::invalid_argument for an unknown name.
const DocumentKind& documentKind(const std::string& name);

}  // namespace bench

#endif

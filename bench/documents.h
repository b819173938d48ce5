/// \file
/// The documents that are parsed, and the directory in which they stand.
///
/// Generation is deterministic: the same kind and size give the same bytes on every machine.
#ifndef QVOX_BENCH_DOCUMENTS_H
#define QVOX_BENCH_DOCUMENTS_H

#include <filesystem>
#include <string>
#include <vector>

#include "document_builder.h"
#include "encodings.h"

namespace bench {

/// A sort of document, by the name that the tables show.
struct DocumentKind {
    std::string name;
    Encoding encoding;
    /// Fills the builder until the document has about `size` bytes.
    void (*generate)(DocumentBuilder& builder, std::size_t size);
};

/// Records of short elements and attributes, long prose, and Japanese text in each encoding.
const std::vector<DocumentKind>& documentKinds();

/// A document in a file.
struct Document {
    DocumentKind kind;
    std::filesystem::path path;
    std::size_t size = 0;
    Contents contents;
};

/// Generates a document and writes it into `directory`.
Document writeDocument(const DocumentKind& kind, std::size_t size,
                       const std::filesystem::path& directory);

/// A new directory below the system's one for temporary files, removed with all in it by the
/// destructor.
class TemporaryDirectory {
public:
    TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory();

    const std::filesystem::path& path() const { return directory; }

private:
    std::filesystem::path directory;
};

}  // namespace bench

#endif

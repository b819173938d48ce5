/// \file
/// Documents in memory and in files, and the directory of these.
#ifndef QVOX_BENCH_DOCUMENTS_H
#define QVOX_BENCH_DOCUMENTS_H

#include <filesystem>
#include <string>

#include "document_builder.h"
#include "document_kinds.h"

namespace bench {

/// What a library reads: ours a file, the others the same bytes in memory, or the file too.
struct Source {
    std::string fileName;
    std::string bytes;
    bool allReadTheFile = false;
};

/// A document whose file stands as long as the object.
class Document {
public:
    /// About `size` bytes, half a thousand for a small kind.
    Document(const DocumentKind& kind, std::size_t size, const std::filesystem::path& directory);
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;
    ~Document();

    const char* name() const { return kind.name; }
    Encoding encoding() const { return kind.encoding; }
    const Source& source() const { return written; }
    const Contents& contents() const { return counted; }
    /// How often the document is read in a turn: small ones many times.
    int repetitions() const { return timesRead; }

private:
    const DocumentKind& kind;
    int timesRead;
    Source written;
    Contents counted;
};

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

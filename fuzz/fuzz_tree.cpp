// Documents as trees: parsed, walked, copied, written and read again. Input: as that of
// fuzz_reading.
#include <memory>
#include <vector>

#include <qvox/qvox.h>

#include "support/input.h"
#include "support/memory_files.h"
#include "support/require.h"
#include "support/trees.h"

namespace qvox_fuzz {
namespace {

using qvox::Document;
using qvox::Node;
using Units = std::vector<unsigned short>;

qvox::DOMParser& parser() {
    static qvox::DOMParser instance;
    return instance;
}

struct Freed {
    void operator()(Document* document) const { parser().free(document); }
};
using OwnedDocument = std::unique_ptr<Document, Freed>;

// Null for a document that is refused.
template <typename Source>
OwnedDocument parsed(Source source) {
    try {
        return OwnedDocument(parser().parse(source));
    } catch (const qvox::QVOXException&) {
        return nullptr;
    }
}

// In a buffer of exactly the size that was asked for.
Units written(Document* document) {
    int size = 0;
    parser().write(document, static_cast<unsigned short*>(nullptr), &size);
    require(size > 0 && size % 2 == 0, "a written document has a size");
    Units units(static_cast<std::size_t>(size) / 2, 0xFFFF);
    parser().write(document, units.data(), &size);
    require(units.back() == 0, "a written document ends with a NUL");
    for (std::size_t i = 0; i + 1 < units.size(); ++i) require(units[i] != 0, "and has no other");
    return units;
}

// What has been read from a writing comes out the same ever after. A document type is left out: it
// is written with its external declarations, and attribute lists are repeated.
void check_rewriting(Document* document) {
    Units first = written(document);
    if (document->getDoctype() != nullptr) return;
    const OwnedDocument again = parsed(first.data());
    if (again == nullptr) return;
    check_tree(again.get());
    Units second = written(again.get());
    const OwnedDocument third = parsed(second.data());
    require(third != nullptr, "what was read from memory can be read again");
    require(shown(again.get()) == shown(third.get()), "a tree comes back as it was");
    require(written(third.get()) == second, "and is written as it was");
}

void check_files(Document* document) {
    const char* const output = memory_file_name(OUTPUT_FILE);
    for (const char* const encoding : {"UTF-16", "Shift_JIS", "EUC-JP"}) {
        parser().write(document, output, encoding);
        parsed(output);
    }
    parser().write(document, output);
}

void check_copy(Document* document) {
    Node* const root = document->getDocumentElement();
    const OwnedDocument other(parser().createDocument());
    Node* const clone = root->cloneNode(true);
    Node* const import = other->importNode(root, true);
    require(shown(clone) == shown(root), "a clone is as what it was made from");
    require(shown(import) == shown(root), "an import is as what it was made from");
    check_tree(clone);
    parser().freeNode(clone);
    parser().freeNode(import);
}

}  // namespace

void run(Input input) {
    const unsigned switches = input.byte();
    for (std::size_t file = 0; file < OUTPUT_FILE; ++file) set_memory_file(file, input.piece());
    parser().setFeature(qvox::FEATURE_NAMESPACES, (switches & 1U) == 0);
    parser().setFeature(qvox::FEATURE_NAMESPACE_PREFIXES, (switches & 2U) == 0);
    const int handle = next_handle();
    const OwnedDocument document = parsed(memory_file_name(0));
    require(next_handle() == handle, "a parse closes its files");
    if (document == nullptr) return;
    check_tree(document.get());
    check_copy(document.get());
    check_rewriting(document.get());
    if ((switches & 4U) != 0) check_files(document.get());
    if (qvox::DocumentType* const type = document->getDoctype()) type->getInternalSubset();
    document->normalize();
    check_tree(document.get());
    written(document.get());
}

}  // namespace qvox_fuzz

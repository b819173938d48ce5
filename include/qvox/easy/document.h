/// \file
/// Documents of qvox/easy.h: trees that are owned.
#ifndef QVOX_EASY_DOCUMENT_H
#define QVOX_EASY_DOCUMENT_H

#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <qvox/dom.h>
#include <qvox/easy/node.h>
#include <qvox/easy/source.h>
#include <qvox/easy/text.h>
#include <qvox/easy/writer.h>
#include <qvox/parser.h>

namespace qvox::easy {

/// A document with its tree, which goes with it. Moves, and isn't copied; one that was moved from
/// has no tree, and nothing but destruction and assignment is allowed on it. Several threads may
/// read one document, and use documents of their own.
class document {
public:
    /// An empty document.
    document() : tree(detail::checked([] { return DOMParser().createDocument(); })) {}
    /// A document whose outermost element has that name and is empty.
    explicit document(const text& root) : document() { add(root); }
    /// Takes over a document of the classic interface.
    explicit document(qvox::Document* classic) noexcept : tree(classic) {}
    document(const document&) = delete;
    document& operator=(const document&) = delete;
    /// Takes the tree over.
    document(document&& other) noexcept : tree(std::exchange(other.tree, nullptr)) {}
    /// Changes places with `other`.
    document& operator=(document&& other) noexcept {
        std::swap(tree, other.tree);
        return *this;
    }
    ~document() {
        if (tree != nullptr) DOMParser().free(tree);
    }

    /// Reads a file: what the classic interface reads, as that reads it, and all of UTF-8 and
    /// UTF-16 besides. A file with a byte order mark in UTF-8, with characters of two or four bytes
    /// in UTF-8, or with surrogates in UTF-16 is decoded as a whole ahead of the parse; its
    /// external subset is not read then. External entities have to be in what the classic interface
    /// reads. Raises error with the place, and for a file that can't be opened.
    static document load(const std::filesystem::path& file,
                         external_files external = external_files::allowed) {
        detail::source from;
        qvox::Document* const tree = detail::read_file(file, from, tree_reader{external});
        return finished(tree, from);
    }

    /// Reads the bytes of a document in any of these encodings. Those in a Japanese encoding pass
    /// through a temporary file. An external subset of UTF-8 and UTF-16 is not read.
    static document parse(std::string_view bytes,
                          external_files external = external_files::allowed) {
        detail::source from;
        qvox::Document* const tree = detail::read_bytes(bytes, from, tree_reader{external});
        return finished(tree, from);
    }

    /// Writes a file in "UTF-8", "UTF-16", "Shift_JIS", "EUC-JP" or "ISO-2022-JP" (in any case,
    /// with or without dashes), declared as that. What the encoding doesn't have becomes a
    /// character reference in text and attribute values, and takes a CDATA section apart; anywhere
    /// else it raises error. The file is replaced as a whole: an error leaves the old one as it
    /// was.
    void save(const std::filesystem::path& file, std::string_view encoding = "UTF-8") const {
        detail::replace_file(file, bytes(encoding));
    }
    /// The same to a stream, which should be a binary one.
    void save(std::ostream& stream, std::string_view encoding = "UTF-8") const {
        const std::string all = bytes(encoding);
        stream.write(all.data(), static_cast<std::streamsize>(all.size()));
        if (!stream) throw error(QVOXException::FILE_WRITE_ERR, "file write fail");
    }
    /// What save() writes.
    std::string bytes(std::string_view encoding = "UTF-8") const {
        return detail::written(*tree, encoding);
    }

    /// The outermost element, or null.
    node root() const { return tree->getDocumentElement(); }
    /// The document itself as a node, with its comments and processing instructions as children.
    node self() const noexcept { return tree; }
    /// node::all() of the whole document.
    std::vector<node> all(const text& name) const { return self().all(name); }
    /// node::all_ns() of the whole document.
    std::vector<node> all_ns(const text& uri, const text& localName) const {
        return self().all_ns(uri, localName);
    }
    /// Adds the outermost element; see node::add().
    node add(const text& name) const { return self().add(name); }

    /// For the classic interface; stays this object's.
    qvox::Document* get() const noexcept { return tree; }
    /// Gives the tree up to the caller, who frees it with DOMParser::free().
    qvox::Document* release() noexcept { return std::exchange(tree, nullptr); }

private:
    struct tree_reader {
        external_files external;

        qvox::Document* operator()(const char* file, const Xstring& memory) const {
            DOMParser parser;
            parser.setFeature(FEATURE_EXTERNAL_FILES, external == external_files::allowed);
            return file != nullptr ? parser.parse(file) : parser.parse(memory.unicode_str());
        }
    };

    // Puts the name of the encoding back that a text in memory must not have.
    static document finished(qvox::Document* tree, const detail::source& from) {
        document made(tree);
        if (from.declared.empty()) return made;
        qvox::Node* const declaration = tree->getFirstChild();
        std::string data = declaration->getNodeValue().utf8();
        data.insert(data.find('"', data.find('"') + 1) + 1, " encoding=\"" + from.declared + '"');
        declaration->setNodeValue(text(data).get());
        return made;
    }

    qvox::Document* tree;
};

}  // namespace qvox::easy

#endif

/// \file
/// The libraries that are compared at their trees. Each registers itself, so that one that isn't
/// installed is simply not there.
#ifndef QVOX_BENCH_TREE_LIBRARIES_H
#define QVOX_BENCH_TREE_LIBRARIES_H

#include <memory>
#include <string>
#include <vector>

#include "document_builder.h"
#include "encodings.h"
#include "tally.h"

namespace bench {

/// A document in memory, freed by the destructor.
class LoadedTree {
public:
    LoadedTree() = default;
    LoadedTree(const LoadedTree&) = delete;
    LoadedTree& operator=(const LoadedTree&) = delete;
    virtual ~LoadedTree() = default;

    /// What is in it.
    virtual Tally count() = 0;
    /// The number of elements, by going from node to node by the links between them.
    virtual long walk() = 0;
    /// The same by the library's search for all elements.
    virtual long search() = 0;
    /// Copies the document element with all below it, counts the copy if asked to, and frees it.
    virtual Tally clone(bool counted) = 0;
    /// Writes the document to a file, in the encoding that it was read in where the library can.
    virtual void save(const std::string& fileName) = 0;
};

/// One way to get a tree from a file.
struct TreeLibrary {
    std::string name;
    /// How it is used, for the reader of the tables.
    std::string note;
    LengthUnit lengthUnit;
    bool declarationsAreAttributes;
    /// Whether it reads Shift_JIS, EUC-JP and ISO-2022-JP; UTF-8 and UTF-16 go without saying.
    bool readsJapaneseCodes;
    /// Raises std::runtime_error where the library refuses the document.
    std::unique_ptr<LoadedTree> (*load)(const char* fileName);

    bool reads(Encoding encoding) const {
        return readsJapaneseCodes || encoding == Encoding::Utf8 || encoding == Encoding::Utf16;
    }

    /// What has to be counted in a document with these contents has to give.
    Tally expected(const Contents& contents) const {
        return contents.expected(lengthUnit, declarationsAreAttributes);
    }
};

/// The argument that makes the program load and free one tree, as in "--one-tree LIBRARY FILE".
inline constexpr const char* oneTreeOption = "--one-tree";

/// All registered libraries, ours first.
const std::vector<TreeLibrary>& treeLibraries();

/// Raises std::invalid_argument for an unknown name.
const TreeLibrary& treeLibrary(const std::string& name);

/// A static object of this type registers a library.
class TreeLibraryRegistration {
public:
    explicit TreeLibraryRegistration(const TreeLibrary& library);
};

}  // namespace bench

#endif

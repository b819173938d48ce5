/// \file
/// The libraries that are compared at their trees. Each registers itself, so that one that isn't
/// installed is simply not there.
#ifndef QVOX_BENCH_TREE_LIBRARIES_H
#define QVOX_BENCH_TREE_LIBRARIES_H

#include <memory>
#include <string>
#include <vector>

#include "documents.h"
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
    /// The number of elements of that name, by the library's search.
    virtual long search(const std::string& name) = 0;
    /// Copies the document element with all below it, counts the copy if asked to, and frees it.
    virtual Tally clone(bool counted) = 0;
    /// Writes the document to a file, in the encoding that it was read in where the library can.
    virtual void save(const std::string& fileName) = 0;
};

/// One way to get a tree from a document.
struct TreeLibrary {
    std::string name;
    std::string version;
    LengthUnit lengthUnit;
    bool declarationsAreAttributes;
    /// UTF-8 and UTF-16 go without saying.
    bool readsJapaneseCodes;
    /// Raises std::runtime_error where the library refuses the document.
    std::unique_ptr<LoadedTree> (*load)(const Source& source);

    bool reads(Encoding encoding) const { return readsJapaneseCodes || !isJapaneseCode(encoding); }

    /// What has to be counted in the tree of a document with these contents.
    Tally expected(const Contents& contents) const {
        return contents.expected(lengthUnit, declarationsAreAttributes);
    }
};

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

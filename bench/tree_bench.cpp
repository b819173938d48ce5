// The groups "tree-...": every library's tree. A document is parsed into one, which is freed again;
// and in a tree that stands, all nodes are visited, all elements are searched for, and all is
// copied, at documents in UTF-8 only: what a file was written in doesn't show in its tree.
#include <memory>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>

#include "suite.h"
#include "tree_libraries.h"

namespace bench {
namespace {

const std::string parseGroup = "tree-parse";

struct Operation {
    const char* group;
    void (*run)(LoadedTree& tree);
};

constexpr Operation operations[] = {
    {"tree-walk", [](LoadedTree& tree) { benchmark::DoNotOptimize(tree.walk()); }},
    {"tree-search", [](LoadedTree& tree) { benchmark::DoNotOptimize(tree.search()); }},
    {"tree-clone", [](LoadedTree& tree) { benchmark::DoNotOptimize(tree.clone(false)); }},
};

struct Minimum {
    const char* group;
    const char* document;
    const char* rival;
    double ratio;
};

constexpr Minimum minimums[] = {{"tree-parse", "records", "libxml2", 1.0},
                                {"tree-parse", "japanese-shift_jis", "libxml2", 1.0}};

std::optional<double> minimumOf(const std::string& group, const std::string& document,
                                const std::string& rival) {
    for (const Minimum& one : minimums) {
        if (group == one.group && document == one.document && rival == one.rival) return one.ratio;
    }
    return std::nullopt;
}

/// Speeds at trees that differ mean nothing.
void check(const TreeLibrary& library, const Document& document) {
    const Tally expected = library.expected(document.contents);
    const std::unique_ptr<LoadedTree> tree = library.load(document.path.c_str());
    const long elements = document.contents.elements;
    if (tree->count() == expected && tree->clone(true) == expected && tree->walk() == elements &&
        tree->search() == elements) {
        return;
    }
    throw std::runtime_error("the tree of " + library.name + " is not that of " +
                             document.kind.name);
}

void addCases(Suite& suite, const TreeLibrary& library, const Document& document) {
    check(library, document);
    const auto load = [loadFile = library.load, path = document.path.string()] {
        return std::shared_ptr<LoadedTree>(loadFile(path.c_str()));
    };
    suite.time({parseGroup, document.kind.name, library.name}, document.size,
               [load] { benchmark::DoNotOptimize(load()); });
    if (document.kind.encoding != Encoding::Utf8) return;
    for (const Operation& operation : operations) {
        suite.timePrepared(
            {operation.group, document.kind.name, library.name}, document.size,
            [load, run = operation.run]() -> Work { return [tree = load(), run] { run(*tree); }; });
    }
}

void addComparisons(Suite& suite, const std::string& group) {
    for (const Document& document : suite.documents()) {
        for (const char* const rival : {"libxml2", "xerces", "pugixml"}) {
            suite.compare({group, document.kind.name, "qvox", rival,
                           minimumOf(group, document.kind.name, rival)});
        }
    }
}

void addTree(Suite& suite) {
    for (const TreeLibrary& library : treeLibraries()) {
        for (const Document& document : suite.documents()) {
            if (library.reads(document.kind.encoding)) addCases(suite, library, document);
        }
        suite.explain(library.name + " (tree)", library.note);
    }
    addComparisons(suite, parseGroup);
    for (const Operation& operation : operations) addComparisons(suite, operation.group);
}

const GroupRegistration registration(addTree);

}  // namespace
}  // namespace bench

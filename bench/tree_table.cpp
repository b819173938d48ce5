// The section "tree": every library's tree. A document is parsed into one, which is freed again;
// and in a tree that stands, all nodes are visited, elements are searched for, all is copied, and
// all is written into a file.
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "documents.h"
#include "measure.h"
#include "sections.h"
#include "table.h"
#include "tree_libraries.h"

namespace bench {
namespace {

using SharedTree = std::shared_ptr<LoadedTree>;

const std::string searchedName = "item";

/// What is timed, for a library at a document. What a work holds is freed with it.
using PrepareWork = Work (*)(const TreeLibrary& library, const Document& document,
                             const std::string& target);

[[noreturn]] void refuse(const TreeLibrary& library, const Document& document) {
    throw std::runtime_error("the tree of " + library.name + " is not that of " + document.name());
}

/// Times at trees that differ mean nothing.
SharedTree checkedTree(const TreeLibrary& library, const Document& document) {
    SharedTree tree = library.load(document.source());
    const Tally expected = library.expected(document.contents());
    if (!(tree->count() == expected)) refuse(library, document);
    return tree;
}

Work parsing(const TreeLibrary& library, const Document& document, const std::string&) {
    checkedTree(library, document);
    return [&library, &document] {
        for (int i = 0; i < document.repetitions(); ++i) library.load(document.source());
    };
}

Work walking(const TreeLibrary& library, const Document& document, const std::string&) {
    return [&library, &document, tree = checkedTree(library, document)] {
        if (tree->walk() != document.contents().elements) refuse(library, document);
    };
}

Work searching(const TreeLibrary& library, const Document& document, const std::string&) {
    // Counted in the markup, so that no library's search is believed.
    const std::string& bytes = document.source().bytes;
    long expected = 0;
    const std::string tag = "<" + searchedName + " ";
    for (std::size_t at = bytes.find(tag); at != std::string::npos; at = bytes.find(tag, at + 1)) {
        ++expected;
    }
    return [&library, &document, expected, tree = checkedTree(library, document)] {
        if (tree->search(searchedName) != expected) refuse(library, document);
    };
}

Work cloning(const TreeLibrary& library, const Document& document, const std::string&) {
    SharedTree tree = checkedTree(library, document);
    if (!(tree->clone(true) == library.expected(document.contents()))) refuse(library, document);
    return [tree] { tree->clone(false); };
}

Source readBack(const std::string& fileName) {
    std::ifstream file(fileName, std::ios::binary);
    return {fileName, std::string(std::istreambuf_iterator<char>(file), {})};
}

Work writing(const TreeLibrary& library, const Document& document, const std::string& target) {
    SharedTree tree = checkedTree(library, document);
    tree->save(target);
    if (!(library.load(readBack(target))->count() == library.expected(document.contents()))) {
        refuse(library, document);
    }
    return [tree, target] { tree->save(target); };
}

struct Row {
    const char* label;
    PrepareWork prepare;
    const char* kind;
    /// How many times as fast as these is wanted, if it is.
    std::optional<double> ofLibxml2;
    std::optional<double> ofPugixml;

    std::string name() const { return std::string(label) + ": " + kind; }
    std::optional<double> wanted(const std::string& rival) const {
        return rival == "libxml2" ? ofLibxml2 : ofPugixml;
    }
};

constexpr std::nullopt_t none = std::nullopt;

constexpr Row rows[] = {
    {"parse and free", parsing, "short records", 3.5, none},
    {"parse and free", parsing, "many namespaces", 5.0, none},
    {"parse and free", parsing, "Japanese, UTF-8", 3.5, none},
    {"parse and free", parsing, "Japanese, Shift_JIS", 5.0, none},
    {"parse and free", parsing, "Japanese, EUC-JP", 5.0, none},
    {"parse and free", parsing, "Japanese, ISO-2022-JP", 5.0, none},
    {"parse and free", parsing, "prose", 1.0, none},
    {"parse and free", parsing, "half a kilobyte, UTF-8", none, none},
    {"parse and free", parsing, "half a kilobyte, Shift_JIS", none, none},
    {"parse and free", parsing, "half a kilobyte, UTF-8, all from files", 2.0, none},
    {"parse and free", parsing, "half a kilobyte, Shift_JIS, all from files", 2.0, none},
    {"walk", walking, "short records", 2.0, none},
    {"walk", walking, "Japanese, UTF-8", 2.0, none},
    {"search by name", searching, "short records", 2.0, none},
    {"deep clone", cloning, "short records", 2.0, none},
    {"deep clone", cloning, "Japanese, UTF-8", 2.0, none},
    {"write", writing, "Japanese, UTF-16 little-endian", none, 1.0},
    {"write", writing, "Japanese, Shift_JIS", 3.0, none},
    {"write", writing, "Japanese, EUC-JP", 3.0, none},
};

/// A time for each library that reads the document, ours first.
std::vector<std::optional<double>> timesOf(const Row& row, const Settings& settings) {
    const Document document(documentKind(row.kind), settings.documentSize, settings.directory);
    const std::string target = (settings.directory / "written.xml").string();
    std::vector<Work> works;
    for (const TreeLibrary& library : treeLibraries()) {
        if (library.reads(document.encoding())) {
            works.push_back(row.prepare(library, document, target));
        }
    }
    const std::vector<double> measured = interleavedMedians(works, settings.rounds);
    std::vector<std::optional<double>> times;
    auto next = measured.begin();
    for (const TreeLibrary& library : treeLibraries()) {
        times.push_back(library.reads(document.encoding()) ? std::optional(*next++) : none);
    }
    return times;
}

bool printRow(const Row& row, const Settings& settings, Table& table) {
    const std::vector<TreeLibrary>& libraries = treeLibraries();
    const std::vector<std::optional<double>> times = timesOf(row, settings);
    std::vector<std::string> cells = {row.name()};
    for (const std::optional<double>& time : times) cells.push_back(timeCell(time));
    bool allMet = true;
    for (std::size_t i = 1; i < libraries.size(); ++i) {
        const std::optional<double> ratio = times[i] ? std::optional(*times[i] / *times[0]) : none;
        const std::optional<double> wanted = row.wanted(libraries[i].name);
        cells.insert(cells.end(), {cell(ratio, 2), cell(wanted, 1)});
        allMet = allMet && (!wanted || (ratio && *ratio >= *wanted));
    }
    table.row(cells);
    return allMet;
}

std::vector<std::string> head() {
    std::vector<std::string> names = {"Trees, ms"};
    for (const TreeLibrary& library : treeLibraries()) names.push_back(library.name);
    for (auto rival = treeLibraries().begin() + 1; rival != treeLibraries().end(); ++rival) {
        names.insert(names.end(), {"times " + rival->name, "at least"});
    }
    return names;
}

}  // namespace

bool printTrees(const Settings& settings, std::ostream& stream) {
    Table table(stream, head(), 58);
    bool allMet = true;
    for (const Row& row : rows) {
        if (settings.wants(row.name())) allMet = printRow(row, settings, table) && allMet;
    }
    return allMet;
}

}  // namespace bench

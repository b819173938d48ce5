// The group "tree-write": every library's writer, at a tree that stands, into a file. Beside them
// stands our parse of the same document into a tree, which is freed again: writing must not be
// slower. Ours also writes UTF-16, into a file and into memory.
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <qvox/qvox.h>

#include "suite.h"
#include "tree_libraries.h"

namespace bench {
namespace {

const std::string group = "tree-write";
const std::string parse = "qvox-parse";

/// A tree of ours for the ways of writing that the others don't have.
class OurTree {
public:
    explicit OurTree(const char* fileName) : document(parser.parse(fileName)) {}
    OurTree(const OurTree&) = delete;
    OurTree& operator=(const OurTree&) = delete;
    ~OurTree() { parser.free(document); }

    void saveUtf16(const std::string& fileName) {
        parser.write(document, fileName.c_str(), "UTF-16");
    }

    /// As callers do it: into a buffer whose size is asked for first.
    void writeMemory() {
        int length = 0;
        parser.write(document, static_cast<unsigned short*>(nullptr), &length);
        std::vector<unsigned short> buffer(static_cast<std::size_t>(length) /
                                           sizeof(unsigned short));
        parser.write(document, buffer.data(), &length);
        benchmark::DoNotOptimize(buffer.data());
    }

private:
    qvox::DOMParser parser;
    qvox::Document* document;
};

/// Speeds mean nothing where the document is lost.
void check(const TreeLibrary& library, const Document& document, const std::string& target) {
    library.load(document.path.c_str())->save(target);
    if (library.load(target.c_str())->count() == library.expected(document.contents)) return;
    throw std::runtime_error("what " + library.name + " writes is not " + document.kind.name);
}

void addLibrary(Suite& suite, const TreeLibrary& library, const Document& document,
                const std::string& target) {
    if (!library.reads(document.kind.encoding)) return;
    check(library, document, target);
    const auto load = library.load;
    suite.timePrepared({group, document.kind.name, library.name}, document.size,
                       [load, target, path = document.path.string()]() -> Work {
                           const std::shared_ptr<LoadedTree> tree(load(path.c_str()));
                           return [tree, target] { tree->save(target); };
                       });
}

void addOurs(Suite& suite, const Document& document, const std::string& target) {
    const std::string path = document.path.string();
    suite.time({group, document.kind.name, parse}, document.size,
               [path] { benchmark::DoNotOptimize(treeLibrary("qvox").load(path.c_str())); });
    suite.timePrepared({group, document.kind.name, "qvox-utf-16"}, document.size,
                       [path, target]() -> Work {
                           const auto tree = std::make_shared<OurTree>(path.c_str());
                           return [tree, target] { tree->saveUtf16(target); };
                       });
    suite.timePrepared({group, document.kind.name, "qvox-memory"}, document.size, [path]() -> Work {
        const auto tree = std::make_shared<OurTree>(path.c_str());
        return [tree] { tree->writeMemory(); };
    });
}

void addDocument(Suite& suite, const Document& document) {
    const std::string target = (suite.directory() / "written.xml").string();
    for (const TreeLibrary& library : treeLibraries()) {
        addLibrary(suite, library, document, target);
    }
    addOurs(suite, document, target);
    suite.compare({group, document.kind.name, "qvox", parse, 1.0});
    for (const char* const rival : {"libxml2", "pugixml", "xerces"}) {
        suite.compare({group, document.kind.name, "qvox", rival, std::nullopt});
    }
}

void addWrite(Suite& suite) {
    for (const Document& document : suite.documents()) {
        // Nobody writes it but by way of iconv.
        if (document.kind.encoding != Encoding::Iso2022Jp) addDocument(suite, document);
    }
    suite.explain(parse, "a parse into a tree, which is freed again");
    suite.explain("qvox-utf-16", "the same tree as a file in UTF-16");
    suite.explain("qvox-memory", "the same tree in memory, with the size asked for first");
}

const GroupRegistration registration(addWrite);

}  // namespace
}  // namespace bench

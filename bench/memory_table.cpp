// The section "memory": how far a process grows by a tree, and by the events of a stream that never
// is in memory, nor on the disk.
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "documents.h"
#include "one_run.h"
#include "sections.h"
#include "table.h"
#include "tree_libraries.h"

namespace bench {
namespace {

constexpr std::size_t streamBlock = 1'000'000;
/// In bytes, however long the stream is.
constexpr double streamAtMost = 8e6;
/// In sizes of the document.
constexpr double treeAtMost = 7.5;

std::string megabytes(double bytes, int digits) { return cell(bytes / 1e6, digits); }

/// Records without end: what is inside the root of a document of records, again and again.
class RecordStream {
public:
    RecordStream(const Settings& settings)
        : document(documentKind("short records"), streamBlock, settings.directory),
          bytes(document.source().bytes),
          begin(bytes.find(">\n", bytes.find("<catalogue")) + 1),
          end(bytes.rfind("\n</catalogue>")),
          count(settings.streamSize / (end - begin) + 1) {}

    void write(std::FILE* stream) const {
        put(bytes.substr(0, begin), stream);
        for (std::size_t i = 0; i < count; ++i) put(bytes.substr(begin, end - begin), stream);
        put(bytes.substr(end), stream);
    }

    long elements() const {
        return (document.contents().elements - 1) * static_cast<long>(count) + 1;
    }

private:
    const Document document;
    const std::string_view bytes;
    const std::size_t begin;
    const std::size_t end;
    const std::size_t count;

    static void put(std::string_view piece, std::FILE* stream) {
        std::fwrite(piece.data(), 1, piece.size(), stream);
    }
};

void check(const RunFigures& figures, long elements, const std::string& name) {
    if (figures.elements == elements) return;
    throw std::runtime_error(name + " saw " + std::to_string(figures.elements) +
                             " elements instead of " + std::to_string(elements));
}

bool printStream(const Settings& settings, Table& table) {
    const RecordStream records(settings);
    const RunFigures figures = measureRun(oneParseOption, "qvox", "/dev/stdin", settings.directory,
                                          [&records](std::FILE* stream) { records.write(stream); });
    check(figures, records.elements(), "qvox");
    const auto peak = static_cast<double>(figures.peak);
    std::vector<std::string> cells = {"events of a stream of records",
                                      megabytes(static_cast<double>(settings.streamSize), 1),
                                      megabytes(peak, 2)};
    cells.resize(treeLibraries().size() + 2);
    cells.push_back(megabytes(streamAtMost, 1));
    table.row(cells);
    return peak <= streamAtMost;
}

bool printTree(const Settings& settings, Table& table) {
    const Document document(documentKind("short records"), settings.documentSize,
                            settings.directory);
    const auto size = static_cast<double>(document.source().bytes.size());
    std::vector<std::string> cells = {"tree of short records", megabytes(size, 1)};
    bool met = true;
    for (const TreeLibrary& library : treeLibraries()) {
        const RunFigures figures =
            measureRun(oneTreeOption, library.name, document.source().fileName, settings.directory);
        check(figures, document.contents().elements, library.name);
        const auto peak = static_cast<double>(figures.peak);
        if (library.name == "qvox") met = peak <= treeAtMost * size;
        cells.push_back(megabytes(peak, 2));
    }
    cells.push_back(megabytes(treeAtMost * size, 1));
    table.row(cells);
    return met;
}

std::vector<std::string> head() {
    std::vector<std::string> names = {"Peak of memory, MB", "document"};
    for (const TreeLibrary& library : treeLibraries()) names.push_back(library.name);
    names.emplace_back("at most");
    return names;
}

struct Row {
    const char* name;
    bool (*print)(const Settings& settings, Table& table);
};

constexpr Row rows[] = {{"tree of short records", printTree},
                        {"events of a stream of records", printStream}};

}  // namespace

bool printMemory(const Settings& settings, std::ostream& stream) {
    Table table(stream, head(), 32);
    bool allMet = true;
    for (const Row& row : rows) {
        if (settings.wants(row.name)) allMet = row.print(settings, table) && allMet;
    }
    return allMet;
}

}  // namespace bench

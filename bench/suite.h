/// \file
/// What the groups of benchmarks share. A group is one file: it registers itself by a static
/// GroupRegistration and adds its cases, the comparisons of their speeds, and sections of its own.
#ifndef QVOX_BENCH_SUITE_H
#define QVOX_BENCH_SUITE_H

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "documents.h"

namespace bench {

/// What is timed: a contestant at a document, shown as "group/document/contestant".
struct Case {
    std::string group;
    std::string document;
    std::string contestant;

    std::string name() const { return group + "/" + document + "/" + contestant; }
};

/// A ratio of the speeds of two contestants at one document to print.
struct Comparison {
    std::string group;
    std::string document;
    std::string contestant;
    std::string rival;
    /// The ratio that is asked for, if one is.
    std::optional<double> minimum;

    Case ours() const { return {group, document, contestant}; }
    Case theirs() const { return {group, document, rival}; }
};

/// What is printed behind the tables of speeds.
struct Section {
    std::string name;
    /// Returns whether what is asked for is met.
    std::function<bool(std::ostream& stream)> print;
};

using Work = std::function<void()>;

class Suite {
public:
    /// Documents are written to `directory`, each about `documentSize` bytes long.
    Suite(std::filesystem::path directory, std::size_t documentSize);

    /// One document of each kind.
    const std::vector<Document>& documents() const { return allDocuments; }
    const std::filesystem::path& directory() const { return documentDirectory; }
    std::size_t documentSize() const { return sizeOfDocuments; }

    /// Has `work`, which handles `bytes` bytes, timed.
    void time(const Case& timed, std::size_t bytes, const Work& work);
    /// The same for work that needs preparation, which isn't timed: `prepare` returns the work, and
    /// what that holds is freed afterwards.
    void timePrepared(const Case& timed, std::size_t bytes, const std::function<Work()>& prepare);
    void compare(const Comparison& comparison) { allComparisons.push_back(comparison); }
    /// Explains a contestant below the tables.
    void explain(const std::string& contestant, const std::string& note);
    void addSection(const Section& section) { allSections.push_back(section); }

    const std::vector<Case>& cases() const { return allCases; }
    const std::vector<Comparison>& comparisons() const { return allComparisons; }
    const std::vector<std::string>& notes() const { return allNotes; }
    const std::vector<Section>& sections() const { return allSections; }

private:
    std::filesystem::path documentDirectory;
    std::size_t sizeOfDocuments;
    std::vector<Document> allDocuments;
    std::vector<Case> allCases;
    std::vector<Comparison> allComparisons;
    std::vector<std::string> allNotes;
    std::vector<Section> allSections;
};

using Group = void (*)(Suite& suite);

/// A static object of this type registers a group.
class GroupRegistration {
public:
    explicit GroupRegistration(Group group);
};

/// Has every registered group add to the suite.
void addGroups(Suite& suite);

}  // namespace bench

#endif

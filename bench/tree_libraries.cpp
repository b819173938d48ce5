#include "tree_libraries.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace bench {
namespace {

std::vector<TreeLibrary>& registry() {
    static std::vector<TreeLibrary> libraries;
    return libraries;
}

std::pair<bool, std::string> place(const TreeLibrary& library) {
    return {library.name != "qvox", library.name};
}

}  // namespace

const std::vector<TreeLibrary>& treeLibraries() { return registry(); }

const TreeLibrary& treeLibrary(const std::string& name) {
    const auto found = std::find_if(registry().begin(), registry().end(),
                                    [&name](const TreeLibrary& one) { return one.name == name; });
    if (found == registry().end()) throw std::invalid_argument("no library " + name);
    return *found;
}

TreeLibraryRegistration::TreeLibraryRegistration(const TreeLibrary& library) {
    registry().push_back(library);
    std::sort(registry().begin(), registry().end(),
              [](const TreeLibrary& a, const TreeLibrary& b) { return place(a) < place(b); });
}

}  // namespace bench

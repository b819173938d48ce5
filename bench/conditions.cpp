// What the figures hold for.
#include <fstream>
#include <map>
#include <ostream>
#include <string>
#include <sys/utsname.h>
#include <thread>

#include "sax_parsers.h"
#include "sections.h"
#include "table.h"
#include "tree_libraries.h"

namespace bench {
namespace {

/// What stands behind `key`, blanks and `separator` in a line of the file.
std::string valueIn(const char* fileName, const std::string& key, char separator) {
    std::ifstream file(fileName);
    for (std::string line; std::getline(file, line);) {
        if (line.rfind(key, 0) != 0) continue;
        const std::size_t start = line.find_first_not_of(" \"", line.find(separator) + 1);
        if (start == std::string::npos) break;
        return line.substr(start, line.find_last_not_of(" \"") + 1 - start);
    }
    return "unknown";
}

std::string kernel() {
    utsname names = {};
    if (uname(&names) != 0) return "unknown";
    return std::string(names.sysname) + " " + names.release + " on " + names.machine;
}

std::string compiler() {
#ifdef __clang__
    return "clang++ " __clang_version__;
#else
    return "g++ " __VERSION__;
#endif
}

std::map<std::string, std::string> versions() {
    std::map<std::string, std::string> found;
    for (const SaxParser& one : saxParsers()) found[one.name] = one.version;
    for (const TreeLibrary& one : treeLibraries()) found[one.name] = one.version;
    return found;
}

}  // namespace

void printConditions(const Settings& settings, std::ostream& stream) {
    stream << valueIn("/proc/cpuinfo", "model name", ':') << ", "
           << std::thread::hardware_concurrency() << " processors; "
           << valueIn("/etc/os-release", "PRETTY_NAME", '=') << " (" << kernel() << "); "
           << compiler() << ".\n";
    const char* separator = "";
    for (const auto& [name, version] : versions()) {
        stream << separator << name << ' ' << version;
        separator = ", ";
    }
    stream << ".\nDocuments of " << cell(static_cast<double>(settings.documentSize) / 1e6, 1)
           << " MB; processor time, median of " << settings.rounds << ".\n";
}

}  // namespace bench

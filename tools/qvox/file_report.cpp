#include "file_report.h"

#include <cstdio>
#include <optional>

#include "hint.h"
#include "source_line.h"

namespace {

constexpr const char* BOLD = "\033[1m";
constexpr const char* RED = "\033[1;31m";
constexpr const char* GREEN = "\033[1;32m";
constexpr const char* CYAN = "\033[1;36m";
constexpr const char* PLAIN = "\033[0m";

std::string coloured(const std::string& text, const char* colour, const Look& look) {
    return look.hasColours ? colour + text + PLAIN : text;
}

}  // namespace

std::string report(const std::string& fileName, const std::string& path, const Failure& failure,
                   const Look& look) {
    const bool isWarning = failure.message.compare(0, 9, "warning: ") == 0;
    std::string text = coloured(describe_place(fileName, failure), BOLD, look) + ": " +
                       coloured(failure.message, isWarning ? CYAN : RED, look) + '\n';
    if (look.isTerminal) {
        if (const auto line = source_line(path, failure.line, failure.column)) {
            text += line->text + '\n' + std::string(line->cells, ' ') + coloured("^", GREEN, look) +
                    '\n';
        }
    }
    const std::string hint = isWarning ? "" : hint_for(failure, path);
    if (!hint.empty()) text += coloured("hint: ", CYAN, look) + hint + '\n';
    return text;
}

void complain(const std::string& fileName, const std::string& path, const Failure& failure) {
    std::fputs(report(fileName, path, failure, look_of(stderr)).c_str(), stderr);
    std::fflush(stderr);  // Windows may hold it back
}

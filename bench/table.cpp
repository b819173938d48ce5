#include "table.h"

#include <algorithm>
#include <iomanip>
#include <ostream>
#include <sstream>

namespace bench {
namespace {

constexpr std::size_t numberWidth = 7;

}  // namespace

Table::Table(std::ostream& target, const std::vector<std::string>& head, std::size_t labelWidth)
    : stream(target) {
    std::string line = "|";
    for (const std::string& name : head) {
        const bool isLabel = widths.empty();
        const std::size_t width = std::max(name.size(), isLabel ? labelWidth : numberWidth);
        widths.push_back(width);
        line += " " + std::string(width - 1, '-') + (isLabel ? "-" : ":") + " |";
    }
    stream << '\n';
    row(head);
    stream << line << std::endl;
}

void Table::row(const std::vector<std::string>& cells) {
    stream << '|';
    for (std::size_t i = 0; i < cells.size(); ++i) {
        stream << ' ' << (i == 0 ? std::left : std::right) << std::setw(static_cast<int>(widths[i]))
               << cells[i] << " |";
    }
    stream << std::endl;
}

std::string cell(std::optional<double> number, int digits) {
    if (!number) return "";
    std::ostringstream text;
    text << std::fixed << std::setprecision(digits) << *number;
    return text.str();
}

std::string timeCell(std::optional<double> time) {
    constexpr double shortTime = 10;
    return cell(time, time && *time < shortTime ? 2 : 1);
}

}  // namespace bench

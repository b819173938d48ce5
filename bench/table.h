/// \file
/// Tables in Markdown that grow row by row, aligned for those who wait in front of a terminal.
#ifndef QVOX_BENCH_TABLE_H
#define QVOX_BENCH_TABLE_H

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace bench {

class Table {
public:
    /// Prints the head. The first column is for what a row is about and takes the space of
    /// `labelWidth` characters.
    Table(std::ostream& target, const std::vector<std::string>& head, std::size_t labelWidth);

    void row(const std::vector<std::string>& cells);

private:
    std::ostream& stream;
    std::vector<std::size_t> widths;
};

/// The number with so many digits behind the point; nothing for none.
std::string cell(std::optional<double> number, int digits);

/// The same for milliseconds: short times show more digits.
std::string timeCell(std::optional<double> time);

}  // namespace bench

#endif

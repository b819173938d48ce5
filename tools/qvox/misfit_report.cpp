#include "misfit_report.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "characters.h"
#include "escape.h"
#include "markup_lines.h"

namespace {

class LinesByPlace {
public:
    LinesByPlace(const Misfits& misfits, const std::string& path) {
        for (const auto& entry : misfits) {
            places.insert(places.end(), entry.second.begin(), entry.second.end());
        }
        std::sort(places.begin(), places.end());
        places.erase(std::unique(places.begin(), places.end()), places.end());
        lines = lines_of(places, path);
    }

    int operator()(int place) const {
        const auto found = std::lower_bound(places.begin(), places.end(), place);
        return lines[static_cast<std::size_t>(found - places.begin())];
    }

private:
    std::vector<int> places;
    std::vector<int> lines;
};

// "lines 3, 7 (4 times)"
std::string in_words(const std::vector<int>& lines) {
    constexpr std::size_t MOST_LINES = 20;
    std::vector<int> distinct;
    std::unique_copy(lines.begin(), lines.end(), std::back_inserter(distinct));
    std::string text = distinct.size() == 1 ? "line " : "lines ";
    for (std::size_t i = 0; i < distinct.size() && i <= MOST_LINES; ++i) {
        if (i > 0) text += ", ";
        text += i == MOST_LINES ? "..." : std::to_string(distinct[i]);
    }
    if (lines.size() > distinct.size()) text += " (" + std::to_string(lines.size()) + " times)";
    return text;
}

// "U+20BB7 <the character>"
std::string in_words(char32_t character) {
    char number[16];
    std::snprintf(number, sizeof number, "U+%04X ", static_cast<unsigned>(character));
    std::string text = number;
    const Units units = units_of(character);
    escape_units(text, units.data(), static_cast<int>(units.size()), Style::PLAIN);
    return text;
}

}  // namespace

std::size_t count_of(const Misfits& misfits) {
    std::size_t count = 0;
    for (const auto& entry : misfits) count += entry.second.size();
    return count;
}

std::string characters_in_words(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " character" : " characters");
}

std::string list_of(const Misfits& misfits, const std::string& path) {
    const LinesByPlace lineOf(misfits, path);
    std::string text;
    for (const auto& [what, places] : misfits) {
        std::vector<int> lines;
        for (const int place : places) lines.push_back(lineOf(place));
        text += "  " + in_words(what.first) + ' ' + what.second + ": " + in_words(lines) + '\n';
    }
    return text;
}

#include "markup_lines.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "source_units.h"

namespace {

// Goes through a file by what its markup looks like; whether that is well-formed was seen to by a
// parse.
class Lines {
public:
    explicit Lines(const std::string& path)
        : units(path), count(xml_declaration_of(path).empty() ? 0 : -1) {}

    // Of the place, which must not lie in front of the last one.
    int lineOf(int place) {
        while (count < place && passOne()) {
        }
        return place == 0 ? 1 : lineOfLast;
    }

private:
    enum : int { END = SourceUnits::END };

    bool passOne();
    bool passMarkup();
    void passUntil(std::string_view end);
    void passTag(int unit, bool hasSubset);
    void number() {
        ++count;
        lineOfLast = lineOfMarkup;
    }

    SourceUnits units;
    int count;  // of what was passed, where an XML declaration isn't counted
    int lineOfMarkup = 1;
    int lineOfLast = 1;
};

// Up to the next "<" and the markup behind it. False at the end of the file.
bool Lines::passOne() {
    for (int unit = units.next(); unit != END; unit = units.next()) {
        if (unit == '<') return passMarkup();
    }
    return false;
}

bool Lines::passMarkup() {
    lineOfMarkup = units.line();
    const int unit = units.next();
    if (unit == '?') {
        number();
        passUntil("?>");
    } else if (unit == '!') {
        const int kind = units.next();
        if (kind == '-') {
            number();
            units.next();
            passUntil("-->");
        } else if (kind == '[') {
            number();
            passUntil("]]>");
        } else {
            const bool isDocumentType = kind == 'D';
            if (isDocumentType) number();
            passTag(kind, isDocumentType);
        }
    } else if (unit != '/') {
        number();
        passTag(unit, false);
    }
    return true;
}

void Lines::passUntil(std::string_view end) {
    std::array<int, 3> last = {};
    for (int unit = units.next(); unit != END; unit = units.next()) {
        std::rotate(last.begin(), last.begin() + 1, last.end());
        last.back() = unit;
        if (std::equal(end.rbegin(), end.rend(), last.rbegin())) return;
    }
}

// Up to its end, or to the declarations inside it.
void Lines::passTag(int unit, bool hasSubset) {
    int quote = 0;
    for (; unit != END; unit = units.next()) {
        if (quote != 0) {
            if (unit == quote) quote = 0;
        } else if (unit == '"' || unit == '\'') {
            quote = unit;
        } else if (unit == '>' || (hasSubset && unit == '[')) {
            return;
        }
    }
}

}  // namespace

std::vector<int> lines_of(const std::vector<int>& places, const std::string& path) {
    Lines lines(path);
    std::vector<int> result;
    result.reserve(places.size());
    for (const int place : places) result.push_back(lines.lineOf(place));
    return result;
}

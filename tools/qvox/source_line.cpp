#include "source_line.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <iterator>
#include <vector>

#include <qvox/qvox.h>

#include "characters.h"
#include "escape.h"
#include "source_units.h"

namespace {

constexpr std::size_t LONGEST_LINE = 1 << 20;  // bytes that are looked at

struct Range {
    char32_t first;
    char32_t last;
};

// Two cells on a terminal.
constexpr Range WIDE[] = {{0x1100, 0x115F},   {0x2E80, 0x303E},  {0x3041, 0xA4CF},
                          {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},  {0xFE30, 0xFE6F},
                          {0xFF01, 0xFF60},   {0xFFE0, 0xFFE6},  {0x1F300, 0x1F64F},
                          {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};

bool is_wide(char32_t character) {
    return std::any_of(std::begin(WIDE), std::end(WIDE), [character](const Range& range) {
        return character >= range.first && character <= range.last;
    });
}

bool is_half_width_kana(char32_t character) { return character >= 0xFF61 && character <= 0xFF9F; }

// A character of a line, or bytes that are none.
struct Shown {
    std::string text;
    int ownCells;
    int libraryCells;
};

class LineReader {
public:
    explicit LineReader(const std::string& encodingName) : encoding(encodingName) {
        std::transform(encoding.begin(), encoding.end(), encoding.begin(),
                       [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    }

    std::vector<Shown> read(const std::string& line);

private:
    void takeUtf8(std::string_view& rest);
    void takeUtf16(std::string_view& rest);
    void takeSjis(std::string_view& rest);
    void takeEuc(std::string_view& rest);
    void takeJis(std::string_view& rest);

    void add(char32_t character);
    void addPair(int first, int second);
    void addByte(std::string_view& rest);

    std::string encoding;
    bool isKanji = false;  // of ISO-2022-JP
    std::vector<Shown> shown;
};

void LineReader::add(char32_t character) {
    std::string text;
    const Units units = units_of(character == '\t' ? ' ' : character);
    escape_units(text, units.data(), static_cast<int>(units.size()), Style::PLAIN);
    const bool isEscaped = text.size() > 1 && text[0] == '\\';
    const int ownCells = isEscaped ? static_cast<int>(text.size()) : is_wide(character) ? 2 : 1;
    const bool isNarrow =
        character < 0x80 || (is_half_width_kana(character) && encoding.compare(0, 3, "UTF") != 0);
    shown.push_back({text, ownCells, isNarrow ? 1 : 2});
}

void LineReader::addByte(std::string_view& rest) {
    std::string text;
    escape_file_name(text, std::string(1, rest[0]), Style::PLAIN);
    shown.push_back({text, static_cast<int>(text.size()), 1});
    rest.remove_prefix(1);
}

// By the numbers of JIS X 0208, both from 0x21 on. Narrow text of the library is Shift_JIS.
void LineReader::addPair(int first, int second) {
    const int lead = (first + 1) / 2 + (first <= 0x5E ? 0x70 : 0xB0);
    const int odd = second + (second >= 0x60 ? 0x20 : 0x1F);
    const char bytes[] = {static_cast<char>(lead),
                          static_cast<char>(first % 2 == 1 ? odd : second + 0x7E), '\0'};
    const qvox::Xstring text(bytes);
    add(text.length() == 1 ? text.data()[0] : 0xFFFD);
}

int byte_at(std::string_view text, std::size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0;
}

void LineReader::takeUtf8(std::string_view& rest) {
    char32_t character = 0;
    const std::size_t size = decode_utf8(rest, character);
    if (size == 0) return addByte(rest);
    add(character);
    rest.remove_prefix(size);
}

void LineReader::takeUtf16(std::string_view& rest) {
    const auto unitAt = [&](std::size_t i) {
        return static_cast<unsigned short>(byte_at(rest, i) + byte_at(rest, i + 1) * 256);
    };
    const std::array<unsigned short, 2> units = {unitAt(0), unitAt(2)};
    const unsigned short* unit = units.data();
    const char32_t character = next_character(unit, unit + (rest.size() >= 4 ? 2 : 1));
    if (character != 0xFEFF) add(character);
    rest.remove_prefix(std::min(rest.size(), static_cast<std::size_t>(unit - units.data()) * 2));
}

void LineReader::takeSjis(std::string_view& rest) {
    const int lead = byte_at(rest, 0);
    const bool isPair = (lead >= 0x81 && lead <= 0x9F) || (lead >= 0xE0 && lead <= 0xFC);
    const qvox::Xstring text(std::string(rest.substr(0, isPair ? 2 : 1)).c_str());
    if (text.length() != 1 || text.data()[0] == 0xFFFD) return addByte(rest);
    add(text.data()[0]);
    rest.remove_prefix(isPair ? 2 : 1);
}

void LineReader::takeEuc(std::string_view& rest) {
    const int first = byte_at(rest, 0);
    const int second = byte_at(rest, 1);
    if (first == 0x8E && second >= 0xA1 && second <= 0xDF) {
        add(static_cast<char32_t>(0xFF61 + second - 0xA1));
    } else if (first >= 0xA1 && second >= 0xA1) {
        addPair(first - 0x80, second - 0x80);
    } else {
        return first < 0x80 ? takeUtf8(rest) : addByte(rest);
    }
    rest.remove_prefix(2);
}

// Escape sequences take no cells.
void LineReader::takeJis(std::string_view& rest) {
    constexpr int ESCAPE = 0x1B;
    if (byte_at(rest, 0) == ESCAPE) {
        isKanji = byte_at(rest, 1) == '$';
        rest.remove_prefix(std::min<std::size_t>(rest.size(), 3));
    } else if (isKanji && rest.size() >= 2) {
        addPair(byte_at(rest, 0), byte_at(rest, 1));
        rest.remove_prefix(2);
    } else {
        takeSjis(rest);
    }
}

std::vector<Shown> LineReader::read(const std::string& line) {
    const struct {
        std::string_view name;
        void (LineReader::*take)(std::string_view& rest);
    } readers[] = {{"UTF-16", &LineReader::takeUtf16},
                   {"SHIFT_JIS", &LineReader::takeSjis},
                   {"EUC-JP", &LineReader::takeEuc},
                   {"ISO-2022-JP", &LineReader::takeJis}};
    const auto* const reader =
        std::find_if(std::begin(readers), std::end(readers),
                     [this](const auto& candidate) { return candidate.name == encoding; });
    const auto take = reader != std::end(readers) ? reader->take : &LineReader::takeUtf8;
    for (std::string_view rest = line; !rest.empty();) (this->*take)(rest);
    return std::move(shown);
}

// The bytes of a line without its end, those of UTF-16 with the low one first. False where the file
// has fewer lines.
bool read_line(SourceUnits& units, int wanted, std::string& line) {
    int unit = units.next();
    while (units.line() < wanted && unit != SourceUnits::END) unit = units.next();
    if (units.line() < wanted) return false;
    if (wanted > 1) unit = units.next();
    if (wanted > 1 && unit == '\n' && units.line() == wanted) unit = units.next();
    for (; unit != SourceUnits::END && unit != '\n' && unit != '\r' && line.size() < LONGEST_LINE;
         unit = units.next()) {
        line += static_cast<char>(unit & 0xFF);
        if (units.isWide()) line += static_cast<char>(unit >> 8);
    }
    return true;
}

}  // namespace

std::optional<SourceLine> source_line(const std::string& path, int line, int column) {
    constexpr int CELLS_BEFORE = 50;
    constexpr int CELLS_BEHIND = 25;
    SourceUnits units(path, SourceUnits::ALL);
    std::string bytes;
    if (line < 1 || column < 1 || !read_line(units, line, bytes)) return std::nullopt;
    const std::vector<Shown> shown = LineReader(encoding_of(path)).read(bytes);

    int passed = 1;
    std::size_t place = 0;
    while (place < shown.size() && passed + shown[place].libraryCells <= column) {
        passed += shown[place++].libraryCells;
    }
    if (place == shown.size() && passed < column) return std::nullopt;

    std::size_t start = place;
    int cells = 0;
    while (start > 0 && cells + shown[start - 1].ownCells <= CELLS_BEFORE) {
        cells += shown[--start].ownCells;
    }
    SourceLine result = {start > 0 ? "..." : "", 0};
    for (std::size_t i = start; i < place; ++i) result.text += shown[i].text;
    result.cells = static_cast<std::size_t>(cells) + (start > 0 ? 3 : 0);
    int behind = 0;
    for (; place < shown.size() && behind < CELLS_BEHIND; ++place) {
        result.text += shown[place].text;
        behind += shown[place].ownCells;
    }
    if (place < shown.size()) result.text += "...";
    return result;
}

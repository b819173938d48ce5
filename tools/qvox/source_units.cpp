#include "source_units.h"

#include <array>
#include <cctype>
#include <string_view>

#include "file_name.h"

SourceUnits::SourceUnits(const std::string& path, Choice unitChoice)
    : file(open_file(path, "rb")), choice(unitChoice) {
    if (file == nullptr) return;
    std::array<unsigned char, 2> start = {};
    const std::size_t size = std::fread(start.data(), 1, start.size(), file.get());
    const unsigned first = size == 2 ? start[0] * 256U + start[1] : 0;
    if (first == 0xFEFF || first == '<') {
        unitSize = 2;
    } else if (first == 0xFFFE || first == '<' * 256) {
        unitSize = 2;
        highByte = 1;
    }
    std::rewind(file.get());
}

// Every line end counts once: CR LF, LF and CR.
int SourceUnits::next() {
    constexpr int ESCAPE = 0x1B;
    int unit = nextUnit();
    while (unit == ESCAPE && unitSize == 1 && choice == MARKUP_ONLY) {
        const bool beginsKanji = nextUnit() == '$';
        nextUnit();
        unit = nextUnit();
        while (beginsKanji && unit != ESCAPE && unit != '\n' && unit != END) unit = nextUnit();
    }
    if (unit == '\r' || (unit == '\n' && last != '\r')) ++lineNumber;
    last = unit;
    return unit;
}

int SourceUnits::nextUnit() {
    const int first = nextByte();
    if (unitSize == 1 || first == END) return first;
    const int second = nextByte();
    if (second == END) return END;
    return highByte == 0 ? first * 256 + second : second * 256 + first;
}

int SourceUnits::nextByte() {
    constexpr std::size_t BLOCK_SIZE = 65536;
    if (inBlock == block.size()) {
        if (file == nullptr) return END;
        block.resize(BLOCK_SIZE);
        block.resize(std::fread(block.data(), 1, BLOCK_SIZE, file.get()));
        inBlock = 0;
        if (block.empty()) return END;
    }
    return block[inBlock++];
}

std::string xml_declaration_of(const std::string& path) {
    constexpr std::string_view START = "<?xml";
    constexpr std::size_t LONGEST = 1024;
    constexpr int BYTE_ORDER_MARK = 0xFEFF;
    SourceUnits units(path);
    int unit = units.next();
    for (const int byte : {0xEF, 0xBB, 0xBF}) {
        if (unit == byte) unit = units.next();
    }
    if (unit == BYTE_ORDER_MARK) unit = units.next();
    std::string text;
    for (; unit > 0 && unit < 0x80 && unit != '>' && text.size() < LONGEST; unit = units.next()) {
        text += static_cast<char>(unit);
    }
    const bool isDeclaration = text.size() > START.size() + 1 && text.back() == '?' &&
                               text.compare(0, START.size(), START) == 0 &&
                               std::isspace(static_cast<unsigned char>(text[START.size()])) != 0;
    return isDeclaration ? text.substr(2, text.size() - 3) : std::string();
}

std::string pseudo_attribute(const std::string& declaration, const std::string& name) {
    const std::size_t found = declaration.find(name);
    const std::size_t quote = declaration.find_first_of("\"'", found);
    if (found == std::string::npos || quote == std::string::npos) return {};
    const std::size_t end = declaration.find(declaration[quote], quote + 1);
    return declaration.substr(quote + 1, end - quote - 1);
}

std::string encoding_of(const std::string& path) {
    if (SourceUnits(path).isWide()) return "UTF-16";
    const std::string declared = pseudo_attribute(xml_declaration_of(path), "encoding");
    return declared.empty() ? "UTF-8" : declared;
}

#include "utf8_source.h"

#include <bitset>
#include <cctype>
#include <cerrno>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include "characters.h"
#include "file_name.h"
#include "source_units.h"

namespace {

// Characters that no text should have.
constexpr char32_t FIRST_MARK = 0xFDD0;
constexpr char32_t LAST_MARK = 0xFDEF;
constexpr char32_t NO_CHARACTER = 0xFFFF;
constexpr char32_t BYTE_ORDER_MARK = 0xFEFF;
constexpr char32_t FIRST_IDEOGRAPH = 0x4E00;

// The characters of a file; NO_CHARACTER for a byte that is no UTF-8.
template <class Action>
void for_each_character(const std::string& path, Action action) {
    constexpr std::size_t BLOCK_SIZE = 65536;
    constexpr std::size_t LONGEST = 4;
    std::ifstream file(path_of(path), std::ios::binary);
    std::string block;
    while (file || !block.empty()) {
        const std::size_t kept = block.size();
        block.resize(kept + BLOCK_SIZE);
        file.read(block.data() + kept, static_cast<std::streamsize>(BLOCK_SIZE));
        block.resize(kept + static_cast<std::size_t>(file.gcount()));
        std::string_view rest = block;
        while (!rest.empty() && (!file || rest.size() >= LONGEST)) {
            if (static_cast<unsigned char>(rest[0]) < 0x80) {
                action(static_cast<char32_t>(rest[0]));
                rest.remove_prefix(1);
                continue;
            }
            char32_t character = NO_CHARACTER;
            const std::size_t size = decode_utf8(rest, character);
            action(size == 0 ? NO_CHARACTER : character);
            rest.remove_prefix(size == 0 ? 1 : size);
        }
        block.erase(0, block.size() - rest.size());
    }
}

bool is_utf8(const std::string& path) {
    std::string name = encoding_of(path);
    for (char& c : name) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return name == "UTF-8";
}

// Of the marks that a document has, also as the numbers of references.
class MarkSearch {
public:
    void take(char32_t character) {
        note(character);
        if (character == '#') {
            number = 0;
            base = 10;
        } else if (base == 10 && number == 0 && character == 'x') {
            base = 16;
        } else if (base != 0) {
            takeDigit(character);
        }
    }

    unsigned short unusedMark() const {
        for (std::size_t i = 0; i < used.size(); ++i) {
            if (!used[i]) return static_cast<unsigned short>(FIRST_MARK + i);
        }
        throw std::runtime_error("the document has all of U+FDD0 to U+FDEF");
    }

private:
    void note(char32_t character) {
        if (character >= FIRST_MARK && character <= LAST_MARK) used.set(character - FIRST_MARK);
    }
    void takeDigit(char32_t character) {
        const std::string_view digits = "0123456789abcdefABCDEF";
        const std::size_t at =
            character < 0x80 ? digits.find(static_cast<char>(character)) : std::string_view::npos;
        if (at == std::string_view::npos || (base == 10 && at > 9)) {
            note(number);
            base = 0;
        } else if (number < 0x110000) {
            number = number * base + static_cast<char32_t>(at > 15 ? at - 6 : at);
        }
    }

    std::bitset<LAST_MARK - FIRST_MARK + 1> used;
    char32_t number = 0;
    char32_t base = 0;  // 0 outside a number
};

// A file in 16-bit units, the low byte first.
class UnitFile {
public:
    explicit UnitFile(std::FILE* openFile) : file(openFile) {}

    void put(char32_t unit) {
        pending += static_cast<char>(unit & 0xFF);
        pending += static_cast<char>(unit >> 8);
        if (pending.size() >= 65536) flush();
    }
    void flush() {
        if (std::fwrite(pending.data(), 1, pending.size(), file) != pending.size()) {
            throw std::system_error(errno, std::generic_category());
        }
        pending.clear();
    }

private:
    std::FILE* file;
    std::string pending;
};

// Where the encoding is named in the declaration, in bytes of the file behind a byte order mark:
// from the blank in front of the word to the quote behind the name.
struct Span {
    std::size_t start;
    std::size_t end;
};

Span encoding_in_declaration(const std::string& path) {
    const std::string declaration = xml_declaration_of(path);
    const std::size_t word = declaration.find("encoding");
    const std::size_t quote = declaration.find_first_of("\"'", word);
    if (word == std::string::npos || quote == std::string::npos) return {0, 0};
    constexpr std::size_t BEFORE = 2;  // "<?"
    return {BEFORE + word, BEFORE + declaration.find(declaration[quote], quote + 1) + 1};
}

}  // namespace

Utf8Survey survey_utf8(const std::string& path) {
    Utf8Survey survey;
    if (!is_utf8(path)) return survey;
    MarkSearch search;
    bool hasLong = false;
    bool isFirst = true;
    for_each_character(path, [&](char32_t character) {
        const bool isLong = character > 0xFFFF;
        const bool isMark = isFirst && character == BYTE_ORDER_MARK;
        survey.needsDecoding |= isMark || isLong || (character >= 0x80 && character < 0x800);
        hasLong |= isLong;
        isFirst = false;
        search.take(character);
    });
    if (hasLong) survey.mark = search.unusedMark();
    return survey;
}

void decode_utf8_file(const std::string& path, const Utf8Survey& survey, std::FILE* to) {
    UnitFile file(to);
    file.put(BYTE_ORDER_MARK);
    const Span named = encoding_in_declaration(path);
    std::size_t count = 0;
    for_each_character(path, [&](char32_t character) {
        if (count == 0 && character == BYTE_ORDER_MARK) return;
        const bool isNamed = count >= named.start && count < named.end;
        ++count;
        if (isNamed) {
            file.put(' ');
        } else if (character < 0x10000) {
            file.put(character);
        } else {
            file.put(survey.mark);
            file.put(FIRST_IDEOGRAPH + ((character - 0x10000) >> 10));
            file.put(FIRST_IDEOGRAPH + ((character - 0x10000) & 0x3FF));
        }
    });
    file.flush();
}

UnitView without_disguise(UnitView text, unsigned short mark, Units& buffer) {
    std::size_t at = mark == 0 ? UnitView::npos : text.find(mark);
    if (at == UnitView::npos) return text;
    buffer.clear();
    for (; at != UnitView::npos && text.size() - at >= 3; at = text.find(mark)) {
        buffer += text.substr(0, at);
        const char32_t high = text[at + 1] - FIRST_IDEOGRAPH;
        const char32_t low = text[at + 2] - FIRST_IDEOGRAPH;
        buffer += units_of(0x10000 + (high << 10) + low);
        text.remove_prefix(at + 3);
    }
    buffer += text;
    return buffer;
}

void DisguiseRemover::documentType(UnitView text, const Literals& literals) {
    Literals plainLiterals;
    for (const Units& literal : literals) plainLiterals.emplace_back(plain(literal));
    next.documentType(plain(text), plainLiterals);
}

void DisguiseRemover::startElement(UnitView name, const std::vector<Attribute>& all) {
    if (mark == 0) return next.startElement(name, all);
    attributes = all;
    values.assign(all.size(), {});
    for (std::size_t i = 0; i < all.size(); ++i) {
        attributes[i].value = without_disguise(all[i].value, mark, values[i]);
    }
    next.startElement(name, attributes);
}

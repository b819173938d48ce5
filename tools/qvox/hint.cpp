#include "hint.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <iterator>
#include <string_view>

#include "source_units.h"

namespace {

struct Clues {
    const Failure& failure;
    const std::string& path;

    bool isSaid(std::string_view words) const {
        return failure.message.find(words) != std::string::npos;
    }
    bool startsWith(std::string_view bytes) const {
        SourceUnits units(path);
        return std::all_of(bytes.begin(), bytes.end(), [&units](char byte) {
            return units.next() == static_cast<unsigned char>(byte);
        });
    }
    // The file, behind white space.
    bool startsWithMarkup() const {
        SourceUnits units(path);
        int unit = units.next();
        while (unit == ' ' || unit == '\t' || unit == '\r' || unit == '\n' || unit == 0xFEFF) {
            unit = units.next();
        }
        return unit == '<';
    }
    // A byte that the decoder of UTF-8 has refused, or 0.
    unsigned refusedByte() const {
        unsigned byte = 0;
        const std::size_t at = failure.message.find("not supported UTF-8 char (");
        if (at != std::string::npos) {
            std::sscanf(failure.message.c_str() + at, "not supported UTF-8 char (%x", &byte);
        }
        return byte;
    }
    bool isIn(std::string_view encoding) const {
        const std::string name = encoding_of(path);
        return std::equal(
            name.begin(), name.end(), encoding.begin(), encoding.end(),
            [](char a, char b) { return std::toupper(static_cast<unsigned char>(a)) == b; });
    }
    bool hasByte(int wanted) const {
        SourceUnits units(path, SourceUnits::ALL);
        int unit = units.next();
        while (unit != SourceUnits::END && unit != wanted) unit = units.next();
        return unit == wanted;
    }
};

struct Cause {
    bool (*isGiven)(const Clues& clues);
    const char* hint;
};

// The first that is given counts.
constexpr Cause CAUSES[] = {
    {[](const Clues& clues) {
         return clues.failure.line == 1 && clues.failure.column <= 3 &&
                clues.startsWith("\xEF\xBB\xBF");
     },
     "the file begins with a byte order mark, which UTF-8 mustn't have here; "
     "`qvox convert --to UTF-8` writes it without"},
    {[](const Clues& clues) { return clues.refusedByte() >= 0xC2 && clues.refusedByte() <= 0xDF; },
     "a character of two bytes in UTF-8 is read as a reference only, such as &#xE9;; "
     "`qvox convert --to UTF-8` writes these"},
    {[](const Clues& clues) { return clues.refusedByte() >= 0xF0 && clues.refusedByte() <= 0xF4; },
     "a character of four bytes in UTF-8 is read as a reference only, such as &#x20BB7;; "
     "`qvox convert --to UTF-8` writes these"},
    {[](const Clues& clues) {
         return !clues.startsWithMarkup() &&
                (clues.isSaid("not XML file") || clues.isSaid("parse error") ||
                 clues.refusedByte() != 0);
     },
     "this is no XML document, which begins with <"},
    {[](const Clues& clues) { return clues.refusedByte() != 0; },
     "this is no UTF-8; a document in Shift_JIS, EUC-JP or ISO-2022-JP has to declare that"},
    {[](const Clues& clues) { return clues.isSaid("not supported encoding"); },
     "the encodings that are known are UTF-8, UTF-16, Shift_JIS, EUC-JP and ISO-2022-JP"},
    {[](const Clues& clues) { return clues.isSaid("encoding decl not match"); },
     "the file isn't written in the encoding that it declares"},
    {[](const Clues& clues) { return clues.isSaid("KOUT code (42)"); },
     "kanji in ISO-2022-JP are ended by ESC ( J here, and ESC ( B is refused"},
    {[](const Clues& clues) {
         return clues.isSaid("not xml char") && clues.isIn("EUC-JP") && clues.hasByte(0x8F);
     },
     "the characters of JIS X 0212, of three bytes in EUC-JP, are read as references only"},
    {[](const Clues& clues) { return clues.isSaid("xml decl must appear first line"); },
     "nothing may stand in front of the XML declaration, not even an empty line"},
    {[](const Clues& clues) { return clues.isSaid("illegal reference"); },
     "an & that begins no reference is written as &amp;"},
};

}  // namespace

std::string hint_for(const Failure& failure, const std::string& path) {
    const Clues clues = {failure, path};
    const auto* const cause =
        std::find_if(std::begin(CAUSES), std::end(CAUSES),
                     [&clues](const Cause& candidate) { return candidate.isGiven(clues); });
    return cause != std::end(CAUSES) && failure.line > 0 ? cause->hint : "";
}

// Texts and their conversions. Input: a byte that says what the text is made from, and the text.
#include <sstream>
#include <string>
#include <vector>

#include <qvox/qvox.h>

#include "support/input.h"
#include "support/require.h"

namespace qvox_fuzz {
namespace {

using qvox::Xstring;
using Units = std::vector<unsigned short>;
using Bytes = std::vector<unsigned char>;

// Behind the bytes stands a NUL.
Units units_of(const std::string& bytes) {
    Units units;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const unsigned high = static_cast<unsigned char>(bytes[i]);
        units.push_back(
            static_cast<unsigned short>(high << 8U | static_cast<unsigned char>(bytes[i + 1])));
    }
    units.push_back(0);
    return units;
}

// In a buffer of exactly the size that the interface asks for.
template <typename Byte>
std::string converted(const Xstring& text, Byte* (Xstring::*convert)(Byte*) const) {
    Bytes bytes(2 * static_cast<std::size_t>(text.length()) + 1);
    (text.*convert)(reinterpret_cast<Byte*>(bytes.data()));
    return std::string(reinterpret_cast<char*>(bytes.data()));
}

void check_conversions(const Xstring& text) {
    const std::string sjis = converted<unsigned char>(text, &Xstring::sjis_str);
    const Xstring back(sjis.c_str());
    require(converted<unsigned char>(back, &Xstring::sjis_str) == sjis, "Shift_JIS comes back");
    converted<unsigned char>(text, &Xstring::os_str);
    converted<unsigned char>(text, &Xstring::euc_str);
    converted<char>(text, &Xstring::jis_str);
    converted<char>(text, &Xstring::ascii_str);
    Units units(static_cast<std::size_t>(text.length()) + 1);
    text.unicode_str(units.data());
    require(units.back() == 0, "a NUL stands behind the units");
    std::ostringstream stream;
    stream << text;
}

void check_edits(const Xstring& text, Input& input) {
    const int start = static_cast<int>(input.byte()) - 64;
    const int count = static_cast<int>(input.byte()) - 64;
    const Xstring part = text.substr(start, count);
    require(part.length() <= text.length(), "a part is no longer than the whole");
    const Xstring joined = text.substr(0, start) + text.substr(start, text.length());
    require(start < 0 || joined == text, "two parts are the whole");
    Xstring grown = part;
    grown += text;
    grown += part.data();
    grown += static_cast<unsigned short>(input.byte());
    grown = grown.substr(1, grown.length());
    require(Xstring(grown) == grown, "a copy is equal");
    grown = grown.data();
    check_conversions(grown);
}

}  // namespace

void run(Input input) {
    const unsigned kind = input.byte() % 3;
    Input edits = input;
    const std::string bytes = input.rest();
    Units units = units_of(bytes);
    const auto length = static_cast<int>(qvox::UnitTraits::length(units.data()));
    const Xstring text = kind == 0   ? Xstring(bytes.c_str())
                         : kind == 1 ? Xstring(units.data())
                                     : Xstring(units.data(), length);
    check_conversions(text);
    check_edits(text, edits);
    text.find(bytes.substr(0, 2).c_str());
    require(!(text == "\x80"), "bytes from 0x80 up equal nothing");
}

}  // namespace qvox_fuzz

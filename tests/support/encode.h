// Unicode text as the bytes of an encoding.
#pragma once

#include <string>
#include <utility>

namespace qvox_test {

inline void append_utf8(std::string& out, char32_t c) {
    constexpr char32_t marks[] = {0, 0xC0, 0xE0, 0xF0};
    const int behind = c < 0x80 ? 0 : c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    out += static_cast<char>(marks[behind] | c >> (6 * behind));
    for (int i = behind; i-- > 0;) out += static_cast<char>(0x80 | (c >> (6 * i) & 0x3F));
}

// Calls `action` with each character of the units. Surrogates without their pair are passed as
// they are.
template <typename Unit, typename Action>
void for_each_character(const Unit* units, int length, Action action) {
    for (int i = 0; i < length; ++i) {
        const auto unit = static_cast<char32_t>(units[i]);
        const auto next = i + 1 < length ? static_cast<char32_t>(units[i + 1]) : U'\0';
        const bool pair = (unit & 0xFC00) == 0xD800 && (next & 0xFC00) == 0xDC00;
        if (pair) ++i;
        action(pair ? 0x10000 + ((unit & 0x3FF) << 10) + (next & 0x3FF) : unit);
    }
}

inline std::string utf8(const std::u16string& text) {
    std::string out;
    for_each_character(text.data(), static_cast<int>(text.size()),
                       [&out](char32_t c) { append_utf8(out, c); });
    return out;
}

// Without a byte order mark; put u"\uFEFF" in front for one.
inline std::string utf16be(const std::u16string& text) {
    std::string out;
    for (const char16_t unit : text) {
        out += static_cast<char>(unit >> 8);
        out += static_cast<char>(unit & 0xFF);
    }
    return out;
}

inline std::string utf16le(const std::u16string& text) {
    std::string out = utf16be(text);
    for (std::size_t i = 0; i < out.size(); i += 2) std::swap(out[i], out[i + 1]);
    return out;
}

// In the machine's byte order.
inline std::string utf16(const std::u16string& text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * 2};
}

}  // namespace qvox_test

#include "text/utf8.h"

namespace qvox {

namespace {

using Code = char32_t;

constexpr Code REPLACEMENT = 0xFFFD;
constexpr Code FIRST_PLANE_END = 0x10000;

// The characters that begin with a range of bytes.
struct Form {
    unsigned char firstByte;  // the range begins here and ends where the next one does
    unsigned char size;       // 0 where no character begins
    unsigned char mask;       // what of the first byte is part of the code
    Code least;               // below it the form is too long
};

constexpr Form FORMS[] = {
    {0x00, 1, 0x7F, 0},     {0x80, 0, 0, 0},          {0xC2, 2, 0x1F, 0x80},
    {0xE0, 3, 0x0F, 0x800}, {0xF0, 4, 0x07, 0x10000}, {0xF5, 0, 0, 0},
};

const Form& form_of(unsigned char first) {
    const Form* form = FORMS;
    for (const Form& candidate : FORMS) {
        if (candidate.firstByte <= first) form = &candidate;
    }
    return *form;
}

bool is_surrogate(Code code) { return code >= 0xD800 && code <= 0xDFFF; }

struct Character {
    Code code;
    std::size_t size;  // bytes
};

Character character_at(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    if (byte(0) < 0x80) return {byte(0), 1};
    const Character bad = {REPLACEMENT, 1};
    const Form& form = form_of(byte(0));
    if (form.size == 0 || form.size > text.size()) return bad;
    Code code = byte(0) & form.mask;
    for (std::size_t i = 1; i < form.size; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return bad;
        code = code << 6 | (byte(i) & 0x3F);
    }
    if (code < form.least || code > 0x10FFFF || is_surrogate(code)) return bad;
    return {code, form.size};
}

char continuation(Code code, unsigned shift) {
    return static_cast<char>(0x80 | (code >> shift & 0x3F));
}

void append_utf8(std::string& out, Code code) {
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += {static_cast<char>(0xC0 | code >> 6), continuation(code, 0)};
    } else if (code < FIRST_PLANE_END) {
        out += {static_cast<char>(0xE0 | code >> 12), continuation(code, 6), continuation(code, 0)};
    } else {
        out += {static_cast<char>(0xF0 | code >> 18), continuation(code, 12), continuation(code, 6),
                continuation(code, 0)};
    }
}

}  // namespace

std::size_t utf8_to_units(std::string_view utf8, Unit* out) {
    std::size_t count = 0;
    const auto put = [&](Code unit) {
        if (out != nullptr) out[count] = static_cast<Unit>(unit);
        ++count;
    };
    while (!utf8.empty()) {
        const Character character = character_at(utf8);
        utf8.remove_prefix(character.size);
        if (character.code < FIRST_PLANE_END) {
            put(character.code);
        } else {
            const Code rest = character.code - FIRST_PLANE_END;
            put(0xD800 | rest >> 10);
            put(0xDC00 | (rest & 0x3FF));
        }
    }
    return count;
}

std::string units_to_utf8(const Unit* units, std::size_t count) {
    std::string out;
    out.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        Code code = units[i];
        if (is_surrogate(code)) {
            const bool isPair = code < 0xDC00 && i + 1 < count && (units[i + 1] & 0xFC00) == 0xDC00;
            code = isPair ? FIRST_PLANE_END + ((code & 0x3FF) << 10) + (units[++i] & 0x3FFU)
                          : REPLACEMENT;
        }
        append_utf8(out, code);
    }
    return out;
}

}  // namespace qvox

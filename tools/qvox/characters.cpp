#include "characters.h"

#include <algorithm>
#include <iterator>

namespace {

struct Utf8Form {
    unsigned char mask;  // of the bits that tell the form
    unsigned char lead;  // what they are
    std::size_t size;
    char32_t least;  // below it the form is longer than it need be
};

constexpr Utf8Form UTF8_FORMS[] = {
    {0x80, 0x00, 1, 0},
    {0xE0, 0xC0, 2, 0x80},
    {0xF0, 0xE0, 3, 0x800},
    {0xF8, 0xF0, 4, 0x10000},
};

}  // namespace

std::size_t decode_utf8(std::string_view bytes, char32_t& character) {
    const auto lead = static_cast<unsigned char>(bytes[0]);
    const auto* const form = std::find_if(
        std::begin(UTF8_FORMS), std::end(UTF8_FORMS),
        [lead](const Utf8Form& candidate) { return (lead & candidate.mask) == candidate.lead; });
    if (form == std::end(UTF8_FORMS) || bytes.size() < form->size) return 0;

    character = lead & ~static_cast<char32_t>(form->mask);
    for (std::size_t i = 1; i < form->size; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if ((byte & 0xC0) != 0x80) return 0;
        character = character << 6 | (byte & 0x3F);
    }
    const bool isWrong = character < form->least || character > 0x10FFFF || is_surrogate(character);
    return isWrong ? 0 : form->size;
}

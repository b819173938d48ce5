#include "text/char_classes.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "text/char_class_tables.h"

namespace qvox {

namespace {

constexpr CharClass O = CLASS_NONE;
constexpr CharClass W = CLASS_SPACE;
constexpr CharClass S = CLASS_SYMBOL;
constexpr CharClass N = CLASS_NAME;

unsigned last_of(const CharRange& range) { return range.last != 0 ? range.last : range.first; }

template <std::size_t Rows>
bool is_in(const CharRange (&table)[Rows], unsigned code) {
    const auto* const range = std::partition_point(
        std::begin(table), std::end(table),
        [code](const CharRange& candidate) { return last_of(candidate) < code; });
    return range != std::end(table) && range->first <= code;
}

bool is_between(unsigned code, unsigned first, unsigned last) {
    return code - first <= last - first;
}

// The letters of nearly every Japanese name, so that these need no search.
bool is_kanji_or_kana(unsigned code) {
    return is_between(code, 0x4E00, 0x9FA5) || is_between(code, 0x30A1, 0x30FA) ||
           is_between(code, 0x3041, 0x3094);
}

constexpr unsigned LONG_VOWEL_MARK = 0x30FC;

}  // namespace

// clang-format off
const CharClass charClassTable[128] = {
    O, O, O, O, O, O, O, O, O, W, W, O, O, W, O, O,  // controls
    O, O, O, O, O, O, O, O, O, O, O, O, O, O, O, O,
    W, S, S, S, S, S, S, S, S, S, S, S, S, N, N, S,  //   ! " # $ % & ' ( ) * + , - . /
    N, N, N, N, N, N, N, N, N, N, N, S, S, S, S, S,  // 0 to 9 : ; < = > ?
    S, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N,  // @ A to O
    N, N, N, N, N, N, N, N, N, N, N, S, S, S, S, N,  // P to Z [ \ ] ^ _
    S, N, N, N, N, N, N, N, N, N, N, N, N, N, N, N,  // ` a to o
    N, N, N, N, N, N, N, N, N, N, N, S, S, S, S, O,  // p to z { | } ~, delete
};
// clang-format on

bool is_base_char(unsigned code) { return is_in(baseCharTable, code); }

bool is_ideographic(unsigned code) { return is_in(ideographicTable, code); }

bool is_letter(unsigned code) { return is_base_char(code) || is_ideographic(code); }

bool is_digit(unsigned code) { return is_in(digitTable, code); }

bool is_combining_char(unsigned code) { return is_in(combiningCharTable, code); }

bool is_extender(unsigned code) { return is_in(extenderTable, code); }

bool is_wide_name_start(unsigned code) { return is_kanji_or_kana(code) || is_letter(code); }

bool is_wide_name_char(unsigned code) {
    if (is_kanji_or_kana(code) || code == LONG_VOWEL_MARK) return true;
    return is_letter(code) || is_digit(code) || is_combining_char(code) || is_extender(code);
}

// Every name character is a character that XML 1.0 allows, so that needs no test of its own.
bool isName(const Unit* text) {
    if (*text == 0) return true;
    if (!is_name_start(*text)) return false;
    while (*++text != 0) {
        if (!is_name_char(*text)) return false;
    }
    return true;
}

}  // namespace qvox

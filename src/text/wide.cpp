#include "text/wide.h"

namespace qvox {

namespace {

// Bytes are read as signed so that one from 0x80 up never equals a unit, whatever char is.
int signed_byte(char byte) { return static_cast<signed char>(byte); }

int upper(int c) { return c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c; }

}  // namespace

int wide_compare(const Unit* a, const Unit* b) {
    while (*a == *b && *a != 0) {
        ++a;
        ++b;
    }
    return *a == *b ? 0 : (*a < *b ? -1 : 1);
}

std::size_t wide_length(const Unit* text) {
    const Unit* end = text;
    while (*end != 0) ++end;
    return static_cast<std::size_t>(end - text);
}

Unit* wide_copy(Unit* to, const Unit* from) {
    std::size_t i = 0;
    do {
        to[i] = from[i];
    } while (from[i++] != 0);
    return to;
}

Unit* wide_ncopy(Unit* to, const Unit* from, std::size_t count) {
    std::size_t i = 0;
    for (; i < count && from[i] != 0; ++i) to[i] = from[i];
    for (; i < count; ++i) to[i] = 0;
    return to;
}

const Unit* wide_find_unit(const Unit* text, Unit unit) {
    for (; *text != 0; ++text) {
        if (*text == unit) return text;
    }
    return nullptr;
}

Unit* wide_append(Unit* to, const Unit* from) {
    wide_copy(to + wide_length(to), from);
    return to;
}

int wide_narrow_compare(const Unit* wide, const char* narrow) {
    while (*wide != 0 && *wide == signed_byte(*narrow)) {
        ++wide;
        ++narrow;
    }
    return *wide - signed_byte(*narrow);
}

int wide_narrow_ncompare(const Unit* wide, const char* narrow, int count) {
    if (count <= 0) return count;
    for (int i = 0; i < count; ++i) {
        const int difference = wide[i] - signed_byte(narrow[i]);
        if (difference != 0 || wide[i] == 0) return difference;
    }
    return 0;
}

int wide_narrow_casecompare(const Unit* wide, const char* narrow) {
    while (*wide != 0 && upper(*wide) == upper(signed_byte(*narrow))) {
        ++wide;
        ++narrow;
    }
    return upper(*wide) - upper(signed_byte(*narrow));
}

Unit* wide_from_narrow(Unit* to, const char* narrow) {
    std::size_t i = 0;
    do {
        to[i] = static_cast<Unit>(signed_byte(narrow[i]));
    } while (narrow[i++] != 0);
    return to;
}

}  // namespace qvox

#include "scanner/attribute_value.h"

namespace qvox {

namespace {

// Both return the new end. A tab becomes a blank, and so does a run of line ends, which a tab ends.
Unit* blank_white_space(Unit* value) {
    Unit* to = value;
    bool afterLineEnd = false;
    for (const Unit* from = value; *from != 0; ++from) {
        const bool isLineEnd = *from == '\n' || *from == '\r';
        if (isLineEnd && afterLineEnd) continue;
        *to++ = isLineEnd || *from == '\t' ? Unit{' '} : *from;
        afterLineEnd = isLineEnd;
    }
    *to = 0;
    return to;
}

// Blanks at the start and at the end go, and every blank behind a blank.
Unit* collapse_blanks(Unit* value) {
    Unit* to = value;
    for (const Unit* from = value; *from != 0; ++from) {
        if (*from == ' ' && (to == value || to[-1] == ' ')) continue;
        *to++ = *from;
    }
    if (to != value && to[-1] == ' ') --to;
    *to = 0;
    return to;
}

}  // namespace

bool is_cdata(const Unit* type) {
    return type == nullptr || wide_narrow_compare(type, "CDATA") == 0;
}

std::size_t normalize_att_value(const Unit* type, Unit* value) {
    const Unit* end = blank_white_space(value);
    if (!is_cdata(type)) end = collapse_blanks(value);
    return static_cast<std::size_t>(end - value);
}

}  // namespace qvox

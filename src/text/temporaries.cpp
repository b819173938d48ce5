#include "text/temporaries.h"

#include <algorithm>
#include <cstring>

#include "runtime/allocation.h"
#include "text/native_text.h"

namespace qvox {

namespace {

constexpr Unit REPLACEMENT_CHARACTER = 0xFFFD;

Unit* allocate_units(std::size_t count) {
    return static_cast<Unit*>(qvox_malloc(count * sizeof(Unit)));
}

void copy_with_normal_line_ends(Unit* to, const Unit* from) {
    for (; *from != 0; ++from) {
        if (*from == '\r') {
            *to++ = '\n';
            if (from[1] == '\n') ++from;
        } else {
            *to++ = *from;
        }
    }
    *to = 0;
}

}  // namespace

WideTemp::WideTemp(const char* narrow)
    : owned(allocate_units(std::strlen(narrow) + 1)), text(owned) {
    std::size_t length = 0;
    native_to_wide(osEncoding, narrow, owned, &length);
    // What isn't Shift_JIS, such as a file name in UTF-8, must not cut the text short.
    std::replace(owned, owned + length, Unit{0}, REPLACEMENT_CHARACTER);
}

WideTemp::WideTemp(const Unit* wide) : text(wide) {
    if (wide_find_unit(wide, '\r') == nullptr) return;
    owned = allocate_units(wide_length(wide) + 1);
    copy_with_normal_line_ends(owned, wide);
    text = owned;
}

WideTemp::~WideTemp() {
    if (owned != nullptr) qvox_free(owned);
}

OsTemp::OsTemp(const Unit* wide)
    : text(static_cast<char*>(qvox_malloc(2 * wide_length(wide) + 1))) {
    wide_to_native(osEncoding, wide, text, nullptr);
}

OsTemp::~OsTemp() { qvox_free(text); }

}  // namespace qvox

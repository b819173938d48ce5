// Primitive operations on NUL-terminated text of 16-bit units, which is what the scanner and the
// parse heap hold. Xstring is the type for text that lives longer.
#pragma once

#include <cstddef>

namespace qvox {

using Unit = unsigned short;

// -1, 0 or 1, unit by unit as unsigned values.
int wide_compare(const Unit* a, const Unit* b);

// Units before the NUL.
std::size_t wide_length(const Unit* text);

// Copies `from` with its NUL. Returns `to`.
Unit* wide_copy(Unit* to, const Unit* from);

// Copies at most `count` units and fills the rest of the `count` with NUL units. A `from` of
// `count` units or more leaves `to` without a NUL. Returns `to`.
Unit* wide_ncopy(Unit* to, const Unit* from, std::size_t count);

// The first `unit` of the text, or null. The NUL is never found.
const Unit* wide_find_unit(const Unit* text, Unit unit);

// Copies `from` with its NUL behind the text of `to`. Returns `to`.
Unit* wide_append(Unit* to, const Unit* from);

// The operations below compare with ASCII literals of the program: nothing is converted, and a byte
// from 0x80 up is negative and equals no unit.

// The difference unit - byte at the first place where the two differ, 0 if they end together.
int wide_narrow_compare(const Unit* wide, const char* narrow);

// The same for the first `count` places; `count` itself where that is 0 or less.
int wide_narrow_ncompare(const Unit* wide, const char* narrow, int count);

// As wide_narrow_compare, with a to z taken as A to Z on both sides. No other letters fold.
int wide_narrow_casecompare(const Unit* wide, const char* narrow);

// Widens an ASCII constant with its NUL. Returns `to`.
Unit* wide_from_narrow(Unit* to, const char* narrow);

// Orders map keys by wide_compare.
struct WideLess {
    bool operator()(const Unit* a, const Unit* b) const { return wide_compare(a, b) < 0; }
};

}  // namespace qvox

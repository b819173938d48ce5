// The bound on what entities may make of a document. Units that come from replacement text are
// counted; past a free amount they may not exceed a multiple of what was read otherwise, so that
// entities don't turn a small document into a machine's memory or a day's work.
//
// An external entity's file counts as read the first time. Each further reading of it is
// replacement text, and opening a file costs something by itself, so that tiny files that include
// each other come to an end too.
#pragma once

#include "platform/byte_stream.h"

namespace qvox {

// Units that are free, whatever the size of the document.
inline constexpr unsigned long long FREE_EXPANSION = 16777216;
// How often beyond that what was read may be repeated.
inline constexpr unsigned long long LARGEST_EXPANSION_RATIO = 100;
// Units that the opening of an external entity counts for.
inline constexpr unsigned long long OPENING_EXPANSION = 128;

extern unsigned long long expandedUnits;   // units of replacement text so far
extern unsigned long long expansionLimit;  // expandedUnits up to here need no closer look

// Starts the count of a parse.
void expansion_start();

// What was read of a file or string that is closed now.
void count_read(unsigned long long amount);

// Works the limit out anew and raises the error of a document whose entities pass it.
void check_expansion();

inline void count_expanded(unsigned long long units) {
    expandedUnits += units;
    if (expandedUnits > expansionLimit) check_expansion();
}

}  // namespace qvox

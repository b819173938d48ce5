// A text of the document, as an event has it.
#pragma once

#include <cstddef>

#include "text/wide.h"

namespace qvox {

struct EventText {
    // A text whose length isn't known, or none.
    explicit EventText(const Unit* text)
        : units(text), length(text != nullptr ? wide_length(text) : 0), mayHaveReturns(true) {}
    EventText(const Unit* text, std::size_t size, bool returns)
        : units(text), length(size), mayHaveReturns(returns) {}

    const Unit* units;  // NUL-terminated; null for none
    std::size_t length;
    bool mayHaveReturns;  // false for a text that is known to have no CR in it
};

}  // namespace qvox

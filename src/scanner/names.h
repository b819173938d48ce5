// The names of a document. It has few and repeats them in every tag: one copy on the parse heap
// serves all, and equal names mostly are the same pointer.
#pragma once

#include <cstddef>

#include "runtime/heap.h"
#include "text/wide.h"

namespace qvox {

class Names {
public:
    explicit Names(Heap& parseHeap) : heap(parseHeap) {}

    // A name of `length` units, which lasts as long as the parse and isn't to be changed.
    Unit* kept_name(const Unit* text, std::size_t length);

private:
    struct RecentName {
        Unit* text = nullptr;
        std::size_t length = 0;
    };

    static constexpr std::size_t RECENT_COUNT = 256;

    Heap& heap;
    RecentName recent[RECENT_COUNT];  // by wide_mark
};

}  // namespace qvox

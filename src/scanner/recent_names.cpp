#include "scanner/recent_names.h"

#include <algorithm>
#include <cstring>

#include "runtime/heap.h"

namespace qvox {

namespace {

struct RecentName {
    Unit* text;
    std::size_t length;
};

constexpr std::size_t RECENT_COUNT = 256;

RecentName recent[RECENT_COUNT];  // by wide_mark

}  // namespace

void recent_names_start() { std::fill_n(recent, RECENT_COUNT, RecentName{nullptr, 0}); }

Unit* kept_name(const Unit* text, std::size_t length) {
    RecentName& name = recent[wide_mark(text, length) % RECENT_COUNT];
    if (name.text == nullptr || name.length != length ||
        std::memcmp(name.text, text, length * sizeof(Unit)) != 0) {
        name = {halloc_copy(parseHeap, text, length), length};
    }
    return name.text;
}

}  // namespace qvox

#include "scanner/names.h"

#include <cstring>

namespace qvox {

Unit* Names::kept_name(const Unit* text, std::size_t length) {
    RecentName& name = recent[wide_mark(text, length) % RECENT_COUNT];
    if (name.text == nullptr || name.length != length ||
        std::memcmp(name.text, text, length * sizeof(Unit)) != 0) {
        name = {heap.halloc_copy(text, length), length};
    }
    return name.text;
}

}  // namespace qvox

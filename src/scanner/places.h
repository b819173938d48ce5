// Steps over units that lie ready, up to the first that is something else: where they are at an end
// there are zeros.
#pragma once

#include "text/char_classes.h"
#include "text/wide.h"

namespace qvox {

inline Unit* behind_name(Unit* place) {
    while (is_name_char(*place)) ++place;
    return place;
}

inline Unit* behind_space(Unit* place) {
    while (is_space(*place)) ++place;
    return place;
}

}  // namespace qvox

// What ends a run of plain characters.
#pragma once

#include "text/wide.h"

namespace qvox {

// The controls but tab always end one.
struct RunStops {
    bool ascii[0x80];
    bool wide;  // all characters from 0x80 up
};

}  // namespace qvox

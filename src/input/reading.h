// A switch for tests, fuzzers and those who look for a fault: how documents are read. Whatever it
// says, the events, messages and places of a document are the same.
#pragma once

#include <cstddef>

namespace qvox {

struct Reading {
    // Units that the window of a level holds; none to have every character decoded by itself.
    std::size_t windowUnits = 16384;
    // Whether content is read by pieces where that is possible, and not by tokens alone.
    bool byPieces = true;
};

// That of this thread. A parse looks at it when it begins.
Reading& reading_of_thread();

}  // namespace qvox

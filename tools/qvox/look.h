// How a stream shows text.
#pragma once

#include <cstdio>

struct Look {
    bool isTerminal = false;  // somebody is there to look at the line of the document
    bool hasColours = false;
};

// Colours are on a terminal alone, and not where NO_COLOR is set or the terminal is dumb.
Look look_of(std::FILE* stream);

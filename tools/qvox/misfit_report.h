// What is said of characters that an encoding doesn't take.
#pragma once

#include <cstddef>
#include <string>

#include "fitting.h"

std::size_t count_of(const Misfits& misfits);

// "1 character", "2 characters".
std::string characters_in_words(std::size_t count);

// A line for each character and what it is part of: "  U+00E9 é in a comment: lines 3, 7 (4
// times)", by the lines of the file.
std::string list_of(const Misfits& misfits, const std::string& path);

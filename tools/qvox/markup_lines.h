// Where in a file the markup stands that a MarkupCounter has numbered.
#pragma once

#include <string>
#include <vector>

// The lines of the given places, which are in rising order; 1 for place 0. A place that the file
// doesn't have is on its last line.
std::vector<int> lines_of(const std::vector<int>& places, const std::string& path);

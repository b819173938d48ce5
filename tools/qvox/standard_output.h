// Keeps the program's standard output apart from the library's report lines, which go there too.
#pragma once

#include <cstdio>

// Moves standard output to the stream that is returned, which belongs to the program alone. What
// the library writes to `stdout` from here on is dropped: the program learns all of it from
// handlers and exceptions. With QVOX_DEBUG or QVOX_MEMSTAT in the environment it goes to standard
// error. Throws WriteError where there is no standard output.
std::FILE* take_standard_output();

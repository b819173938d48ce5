// Files are opened here: on Windows their names are Shift_JIS, like all narrow text, and elsewhere
// the bytes that they are.
#pragma once

#include <cstdio>
#include <memory>

namespace qvox {

// A file of the C library with an owner, so that no way out of a function leaves it open. Standard
// output stays open: that is the process's.
struct CloseFile {
    void operator()(std::FILE* file) const {
        if (file != stdout) std::fclose(file);
    }
};

using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

// Makes or empties a file for binary writing. Null if that fails; errno says why.
OpenFile open_for_writing(const char* fileName);

// Opens a file for binary reading, by the system's own call. Returns the descriptor, which is the
// caller's to close, or -1; errno says why.
int open_for_reading(const char* fileName);

}  // namespace qvox

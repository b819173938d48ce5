// A file of the C library with an owner, so that no way out of a function leaves it open.
#pragma once

#include <cstdio>
#include <memory>

namespace qvox {

// Leaves standard output open: that is the process's.
struct CloseFile {
    void operator()(std::FILE* file) const {
        if (file != stdout) std::fclose(file);
    }
};

using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

enum class FileUse { READ, WRITE };

// Opens a file for binary reading, or makes or empties one for binary writing. On Windows the name
// is Shift_JIS, like all narrow text, and elsewhere the bytes that it is. Null if that fails; errno
// says why.
OpenFile open_file(const char* fileName, FileUse use);

}  // namespace qvox

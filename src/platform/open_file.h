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

}  // namespace qvox

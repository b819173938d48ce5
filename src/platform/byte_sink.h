// Files written by blocks. Nothing is held back: whoever writes hands over large pieces.
#pragma once

#include <cstddef>
#include <memory>
#include <utility>

#include "platform/open_file.h"

namespace qvox {

// A file that is given up in the middle is closed too. Standard output stays open.
class ByteSink {
public:
    // Makes or empties a file for binary writing. Null if that fails and for a null name; errno
    // says why.
    static std::unique_ptr<ByteSink> open(const char* fileName);

    // The C library's stream, so that what is written here keeps its place among what others print.
    static std::unique_ptr<ByteSink> standardOutput();

    ByteSink(const ByteSink&) = delete;
    ByteSink& operator=(const ByteSink&) = delete;

    // False if the system didn't take all of it; errno says why.
    bool write(const void* bytes, std::size_t count);

    // Call it behind the last write. False if what was written didn't get out.
    bool finish();

private:
    explicit ByteSink(OpenFile openFile) : file(std::move(openFile)) {}

    OpenFile file;  // null once it has been closed
};

}  // namespace qvox

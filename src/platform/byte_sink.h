// Files written by blocks. Nothing is held back: whoever writes hands over large pieces.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>

namespace qvox {

class ByteSink {
public:
    // Makes or empties a file for binary writing. Null if that fails and for a null name; errno
    // says why.
    static std::unique_ptr<ByteSink> open(const char* fileName);

    // The C library's stream, so that what is written here keeps its place among what others print.
    static std::unique_ptr<ByteSink> standardOutput();

    ByteSink(const ByteSink&) = delete;
    ByteSink& operator=(const ByteSink&) = delete;
    // Closes a file, also one that was given up in the middle. Standard output stays open.
    ~ByteSink();

    // False if the system didn't take all of it; errno says why.
    bool write(const void* bytes, std::size_t count);

    // Call it behind the last write. False if what was written didn't get out.
    bool finish();

private:
    explicit ByteSink(std::FILE* openStream) : stream(openStream) {}

    std::FILE* stream;  // null once it has been closed
};

}  // namespace qvox

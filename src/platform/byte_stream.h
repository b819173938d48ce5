// Files read byte by byte, out of a buffer of the stream's own.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include "platform/open_file.h"

namespace qvox {

class ByteStream {
public:
    static constexpr int END = -1;

    // A place in a file, in bytes.
    using Position = unsigned long long;

    // Opens a file for binary reading, a pipe or a device too. Null if that fails, for a null or
    // empty name, and for a directory; errno says why.
    static std::unique_ptr<ByteStream> open(const char* fileName);

    // The same for a name that a stranger chose: regular files alone, or links to them. Anything
    // else can't be opened, and a pipe that nobody writes to doesn't make the caller wait.
    static std::unique_ptr<ByteStream> openRegular(const char* fileName);

    ByteStream(const ByteStream&) = delete;
    ByteStream& operator=(const ByteStream&) = delete;

    // The name that the file was opened by.
    const std::string& name() const { return fileName; }

    // The next byte, or END. Stays at END once there.
    int get() {
        if (next == end && !refill()) return END;
        return *next++;
    }

    // Whether END came because the system couldn't read on, and isn't the end of the file. Behind a
    // get() that returned END errno says why.
    bool failed() const { return readError != 0; }

    // Takes the last byte back, so that the next get() returns it again. Only directly behind a
    // get() that returned a byte, and once.
    void unget() { --next; }

    // What lies ready in the buffer, for a reader that takes several bytes at once and says so.
    const unsigned char* ready() const { return next; }
    const unsigned char* readyEnd() const { return end; }
    void take(const unsigned char* behindTaken) { next = behindTaken; }

    // Goes back to the first byte. Only within the first BUFFER_SIZE bytes of the file.
    void rewind() { next = buffer; }

    // Reads on while bytes lie ready, so that more do. Those from `kept` on, a position up to the
    // present one, can be gone back to. False where nothing more is to be had: at the end, behind a
    // failure, and where the buffer is full; get() meets the first two when it comes there.
    bool more(Position kept);

    // The byte at a position, which is still in the buffer.
    const unsigned char* at(Position position) const { return end - (filled - position); }

    // What tells two files apart, whatever their names are.
    using Identity = std::pair<unsigned long long, unsigned long long>;
    Identity identity() const;

    // Bytes handed out so far.
    Position position() const { return filled - static_cast<Position>(end - next); }

private:
    static constexpr std::size_t BUFFER_SIZE = 65536;

    ByteStream(const char* name, OpenFile openFile);
    static std::unique_ptr<ByteStream> of_file(const char* name, OpenFile file, bool onlyRegular);
    bool refill();
    std::size_t read(unsigned char* to, std::size_t size);

    std::string fileName;
    OpenFile file;
    int readError = 0;  // errno of the read that failed
    const unsigned char* next;
    const unsigned char* end;
    Position filled = 0;  // bytes of the file that have been in the buffer
    unsigned char buffer[BUFFER_SIZE];
};

}  // namespace qvox

// Files read byte by byte, out of a buffer of the stream's own.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "platform/readable_file.h"

namespace qvox {

class ByteStream {
public:
    static constexpr int END = -1;

    // A place in a file, in bytes.
    using Position = unsigned long long;

    // Opens a file for binary reading, a pipe or a device too, and reads its beginning. Null if it
    // can't be opened, for a null or empty name, and for a directory; errno says why.
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

    // Goes back to the first byte. Only within the first FIRST_SIZE bytes of the file.
    static constexpr std::size_t FIRST_SIZE = 8192;
    void rewind() { next = buffer.get(); }

    // Reads on while bytes lie ready, so that more do. Those from `kept` on, a position up to the
    // present one, can be gone back to. False where nothing more is to be had: at the end, behind a
    // failure, and where more than LARGEST_SIZE bytes would have to be kept; get() meets the first
    // two when it comes there.
    static constexpr std::size_t LARGEST_SIZE = 262144;
    bool more(Position kept);

    // The byte at a position, which is still in the buffer.
    const unsigned char* at(Position position) const { return end - (filled - position); }

    // What tells two files apart, whatever their names are.
    ReadableFile::Identity identity() const { return file.identity(); }

    // Bytes handed out so far.
    Position position() const { return filled - static_cast<Position>(end - next); }

private:
    ByteStream(const char* name, ReadableFile openFile);
    bool refill();
    bool fill(std::size_t keptSize);
    void make_room(std::size_t keptSize);
    std::size_t size_for(std::size_t keptSize) const;

    std::string fileName;
    ReadableFile file;
    bool isAtEnd = false;  // there is no more, or it can't be read
    int readError = 0;     // errno of the read that failed
    std::size_t bufferSize = FIRST_SIZE;
    std::unique_ptr<unsigned char[]> buffer;
    const unsigned char* next;
    const unsigned char* end;
    Position filled = 0;  // bytes of the file that have been in the buffer
};

}  // namespace qvox

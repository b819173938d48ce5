#include "platform/byte_stream.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace qvox {

namespace {

// A file that isn't small is read by so many bytes.
constexpr std::size_t USUAL_SIZE = 65536;

}  // namespace

std::unique_ptr<ByteStream> ByteStream::open(const char* fileName) {
    if (fileName == nullptr) fileName = "";
    ReadableFile file = ReadableFile::open(fileName);
    if (!file.isOpen()) return nullptr;
    std::unique_ptr<ByteStream> stream(new ByteStream(fileName, std::move(file)));
    stream->fill(0);
    // A directory can be opened, but not read.
    if (stream->readError != EISDIR || !stream->file.isDirectory()) return stream;
    stream.reset();
    errno = EISDIR;
    return nullptr;
}

std::unique_ptr<ByteStream> ByteStream::openRegular(const char* fileName) {
    if (fileName == nullptr) fileName = "";
    ReadableFile file = ReadableFile::openAtOnce(fileName);
    if (!file.isOpen()) return nullptr;
    if (file.isRegular()) {
        std::unique_ptr<ByteStream> stream(new ByteStream(fileName, std::move(file)));
        stream->fill(0);
        return stream;
    }
    const int cause = file.isDirectory() ? EISDIR : EINVAL;
    file = ReadableFile();
    errno = cause;
    return nullptr;
}

ByteStream::ByteStream(const char* name, ReadableFile openFile)
    : fileName(name),
      file(std::move(openFile)),
      buffer(new unsigned char[FIRST_SIZE]),
      next(buffer.get()),
      end(buffer.get()) {}

// The last byte stays, for unget() at the end.
bool ByteStream::refill() {
    if (fill(end == buffer.get() ? 0 : 1)) return true;
    if (failed()) errno = readError;
    return false;
}

bool ByteStream::more(Position kept) { return fill(static_cast<std::size_t>(end - at(kept))); }

// Fills the buffer behind the last `keptSize` of its bytes, as far as the file goes.
bool ByteStream::fill(std::size_t keptSize) {
    if (isAtEnd || keptSize == LARGEST_SIZE) return false;
    make_room(keptSize);
    const std::size_t count = read(buffer.get() + keptSize, bufferSize - keptSize);
    end += count;
    filled += count;
    return count != 0;
}

// Moves the last bytes to the front, of a larger buffer where the present one is small for them.
void ByteStream::make_room(std::size_t keptSize) {
    const std::ptrdiff_t unread = end - next;
    const unsigned char* const kept = end - keptSize;
    const std::size_t size = size_for(keptSize);
    if (size == bufferSize) {
        std::memmove(buffer.get(), kept, keptSize);
    } else {
        std::unique_ptr<unsigned char[]> larger(new unsigned char[size]);
        std::memcpy(larger.get(), kept, keptSize);
        buffer = std::move(larger);
        bufferSize = size;
    }
    end = buffer.get() + keptSize;
    next = end - unread;
}

std::size_t ByteStream::size_for(std::size_t keptSize) const {
    if (filled == 0) return FIRST_SIZE;
    const std::size_t wanted = 2 * keptSize > bufferSize ? 2 * bufferSize : bufferSize;
    return std::clamp(wanted, USUAL_SIZE, LARGEST_SIZE);
}

// Bytes that were read: fewer than were asked for at the end and at a failure, which are for good.
std::size_t ByteStream::read(unsigned char* to, std::size_t size) {
    std::size_t count = 0;
    while (count != size && !isAtEnd) {
        const std::ptrdiff_t some = file.read(to + count, size - count);
        if (some > 0) {
            count += static_cast<std::size_t>(some);
        } else {
            isAtEnd = true;
            if (some < 0) readError = errno;
        }
    }
    return count;
}

}  // namespace qvox

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

// The beginning stays, for rewind(), and otherwise the last byte, for unget() at the end.
bool ByteStream::refill() {
    const std::ptrdiff_t keptSize = filled < FIRST_SIZE ? end - buffer.get() : 1;
    if (fill(static_cast<std::size_t>(keptSize))) return true;
    if (failed()) errno = readError;
    return false;
}

bool ByteStream::more(Position kept) { return fill(static_cast<std::size_t>(end - at(kept))); }

// Reads what is to be had at once behind the last `keptSize` bytes of the buffer.
bool ByteStream::fill(std::size_t keptSize) {
    if (isAtEnd || keptSize == LARGEST_SIZE) return false;
    make_room(keptSize);
    const std::ptrdiff_t count = file.read(buffer.get() + keptSize, bufferSize - keptSize);
    isAtEnd = count <= 0;
    if (count < 0) readError = errno;
    if (isAtEnd) return false;
    end += count;
    filled += static_cast<std::size_t>(count);
    return true;
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
    if (filled < FIRST_SIZE) return FIRST_SIZE;
    const std::size_t wanted = 2 * keptSize > bufferSize ? 2 * bufferSize : bufferSize;
    return std::clamp(wanted, USUAL_SIZE, LARGEST_SIZE);
}

}  // namespace qvox

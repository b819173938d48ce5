#include "platform/byte_stream.h"

#include <cerrno>
#include <cstdint>

#if !defined(_WIN32)
#include <sys/stat.h>
#endif

namespace qvox {

std::unique_ptr<ByteStream> ByteStream::open(const char* fileName) {
    if (fileName == nullptr) {
        errno = ENOENT;
        return nullptr;
    }
    std::FILE* file = std::fopen(fileName, "rb");
    if (file == nullptr) return nullptr;
    std::setvbuf(file, nullptr, _IONBF, 0);  // one buffer is enough, and it is ours
    std::unique_ptr<ByteStream> stream(new ByteStream(file));
    // A directory opens but can't be read: its first read fails, which here means "cannot open".
    if (!stream->refill() && std::ferror(file) != 0) return nullptr;
    return stream;
}

ByteStream::ByteStream(std::FILE* openFile) : file(openFile), next(buffer), end(buffer) {}

ByteStream::~ByteStream() { std::fclose(file); }

bool ByteStream::refill() {
    const std::size_t count = std::fread(buffer, 1, BUFFER_SIZE, file);
    filled += count;
    if (count == 0) return false;  // the buffer keeps its last bytes for unget() at the end
    next = buffer;
    end = buffer + count;
    return true;
}

ByteStream::Identity ByteStream::identity() const {
#if defined(_WIN32)
    return {0, reinterpret_cast<std::uintptr_t>(file)};  // no two are taken for one
#else
    struct stat status = {};
    if (fstat(fileno(file), &status) != 0) return {0, 0};
    return {status.st_dev, status.st_ino};
#endif
}

}  // namespace qvox

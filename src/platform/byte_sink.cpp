#include "platform/byte_sink.h"

#include <cerrno>

namespace qvox {

std::unique_ptr<ByteSink> ByteSink::open(const char* fileName) {
    if (fileName == nullptr) {
        errno = ENOENT;
        return nullptr;
    }
    std::FILE* file = std::fopen(fileName, "wb");
    if (file == nullptr) return nullptr;
    std::setvbuf(file, nullptr, _IONBF, 0);  // the blocks are large enough, and errors come at once
    return std::unique_ptr<ByteSink>(new ByteSink(file));
}

std::unique_ptr<ByteSink> ByteSink::standardOutput() {
    return std::unique_ptr<ByteSink>(new ByteSink(stdout));
}

ByteSink::~ByteSink() {
    if (stream != nullptr && stream != stdout) std::fclose(stream);
}

bool ByteSink::write(const void* bytes, std::size_t count) {
    return std::fwrite(bytes, 1, count, stream) == count;
}

bool ByteSink::finish() {
    if (stream == stdout) return std::fflush(stream) == 0;
    std::FILE* const file = stream;
    stream = nullptr;
    return std::fclose(file) == 0;
}

}  // namespace qvox

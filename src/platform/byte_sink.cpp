#include "platform/byte_sink.h"

#include <cerrno>

namespace qvox {

std::unique_ptr<ByteSink> ByteSink::open(const char* fileName) {
    if (fileName == nullptr) {
        errno = ENOENT;
        return nullptr;
    }
    OpenFile file = open_for_writing(fileName);
    if (file == nullptr) return nullptr;
    // The blocks are large enough, and errors come at once.
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    return std::unique_ptr<ByteSink>(new ByteSink(std::move(file)));
}

std::unique_ptr<ByteSink> ByteSink::standardOutput() {
    return std::unique_ptr<ByteSink>(new ByteSink(OpenFile(stdout)));
}

bool ByteSink::write(const void* bytes, std::size_t count) {
    return std::fwrite(bytes, 1, count, file.get()) == count;
}

bool ByteSink::finish() {
    if (file.get() == stdout) return std::fflush(stdout) == 0;
    return std::fclose(file.release()) == 0;
}

}  // namespace qvox

#include "platform/byte_stream.h"

#include <cerrno>
#include <cstring>
#include <sys/stat.h>
#include <sys/types.h>

#if defined(_WIN32)
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace qvox {

namespace {

#if defined(_WIN32)

using Status = struct _stat64;

bool status_of(std::FILE* file, Status* status) { return _fstat64(_fileno(file), status) == 0; }

bool is_directory(const Status& status) { return (status.st_mode & _S_IFMT) == _S_IFDIR; }

bool is_regular(const Status& status) { return (status.st_mode & _S_IFMT) == _S_IFREG; }

OpenFile open_at_once(const char* fileName) { return open_file(fileName, FileUse::READ); }

ByteStream::Identity identity_of(std::FILE* file) {
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)));
    BY_HANDLE_FILE_INFORMATION information = {};
    if (GetFileInformationByHandle(handle, &information) == 0) return {0, 0};
    const unsigned long long high = information.nFileIndexHigh;
    return {information.dwVolumeSerialNumber, high << 32 | information.nFileIndexLow};
}

#else

using Status = struct stat;

bool status_of(std::FILE* file, Status* status) { return fstat(fileno(file), status) == 0; }

bool is_directory(const Status& status) { return S_ISDIR(status.st_mode); }

bool is_regular(const Status& status) { return S_ISREG(status.st_mode); }

// Opens without waiting for the other end of a pipe. Most pipes aren't even opened: their writer
// would take notice of a reader that comes and goes.
OpenFile open_at_once(const char* fileName) {
    Status status = {};
    if (stat(fileName, &status) == 0 && S_ISFIFO(status.st_mode)) {
        errno = EINVAL;
        return nullptr;
    }
    const int descriptor = ::open(fileName, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) return nullptr;
    OpenFile file(fdopen(descriptor, "rb"));
    if (file == nullptr) close(descriptor);
    return file;
}

ByteStream::Identity identity_of(std::FILE* file) {
    Status status = {};
    if (!status_of(file, &status)) return {0, 0};
    return {status.st_dev, status.st_ino};
}

#endif

}  // namespace

std::unique_ptr<ByteStream> ByteStream::open(const char* fileName) {
    if (fileName == nullptr) fileName = "";
    return of_file(fileName, open_file(fileName, FileUse::READ), false);
}

std::unique_ptr<ByteStream> ByteStream::openRegular(const char* fileName) {
    if (fileName == nullptr) fileName = "";
    return of_file(fileName, open_at_once(fileName), true);
}

std::unique_ptr<ByteStream> ByteStream::of_file(const char* name, OpenFile file, bool onlyRegular) {
    Status status = {};
    if (file == nullptr || !status_of(file.get(), &status)) return nullptr;
    if (is_directory(status) || (onlyRegular && !is_regular(status))) {
        file.reset();
        errno = is_directory(status) ? EISDIR : EINVAL;
        return nullptr;
    }
    std::setvbuf(file.get(), nullptr, _IONBF, 0);  // one buffer is enough, and it is ours
    return std::unique_ptr<ByteStream>(new ByteStream(name, std::move(file)));
}

ByteStream::ByteStream(const char* name, OpenFile openFile)
    : fileName(name), file(std::move(openFile)), next(buffer), end(buffer) {}

// Bytes that were read; none at the end and behind a failure, for good.
std::size_t ByteStream::read(unsigned char* to, std::size_t size) {
    std::size_t count = 0;
    while (count == 0 && readError == 0 && std::feof(file.get()) == 0) {
        count = std::fread(to, 1, size, file.get());
        if (std::ferror(file.get()) == 0) break;
        if (errno == EINTR) {
            std::clearerr(file.get());  // a signal came; nothing is wrong with the file
        } else {
            readError = errno;
        }
    }
    filled += count;
    return count;
}

bool ByteStream::refill() {
    const std::size_t count = read(buffer, BUFFER_SIZE);
    if (count == 0) {  // the buffer keeps its last bytes for unget() at the end
        if (failed()) errno = readError;
        return false;
    }
    next = buffer;
    end = buffer + count;
    return true;
}

bool ByteStream::more(Position kept) {
    const unsigned char* const firstKept = at(kept);
    const auto size = static_cast<std::size_t>(end - firstKept);
    if (size == BUFFER_SIZE) return false;
    next = buffer + (next - firstKept);
    std::memmove(buffer, firstKept, size);
    const std::size_t count = read(buffer + size, BUFFER_SIZE - size);
    end = buffer + size + count;
    return count != 0;
}

ByteStream::Identity ByteStream::identity() const { return identity_of(file.get()); }

}  // namespace qvox

#include "platform/readable_file.h"

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <sys/types.h>

#include "platform/open_file.h"

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

constexpr int TYPE = _S_IFMT;
constexpr int DIRECTORY = _S_IFDIR;
constexpr int REGULAR = _S_IFREG;

bool status_of(int descriptor, Status* status) { return _fstat64(descriptor, status) == 0; }

std::ptrdiff_t read_bytes(int descriptor, unsigned char* to, std::size_t size) {
    constexpr std::size_t MOST = 1U << 30;
    return _read(descriptor, to, static_cast<unsigned>(std::min(size, MOST)));
}

void close_file(int descriptor) { _close(descriptor); }

#else

using Status = struct stat;

constexpr mode_t TYPE = S_IFMT;
constexpr mode_t DIRECTORY = S_IFDIR;
constexpr mode_t REGULAR = S_IFREG;

bool status_of(int descriptor, Status* status) { return fstat(descriptor, status) == 0; }

std::ptrdiff_t read_bytes(int descriptor, unsigned char* to, std::size_t size) {
    return ::read(descriptor, to, size);
}

void close_file(int descriptor) { ::close(descriptor); }

#endif

template <typename Type>
bool is_of_type(int descriptor, Type type) {
    Status status = {};
    return status_of(descriptor, &status) && (status.st_mode & TYPE) == type;
}

}  // namespace

ReadableFile ReadableFile::open(const char* fileName) {
    return ReadableFile(open_for_reading(fileName));
}

ReadableFile::~ReadableFile() {
    if (isOpen()) close_file(descriptor);
}

bool ReadableFile::isDirectory() const { return is_of_type(descriptor, DIRECTORY); }

bool ReadableFile::isRegular() const { return is_of_type(descriptor, REGULAR); }

std::ptrdiff_t ReadableFile::read(unsigned char* to, std::size_t size) {
    for (;;) {
        const std::ptrdiff_t count = read_bytes(descriptor, to, size);
        if (count >= 0 || errno != EINTR) return count;  // a signal is no failure
    }
}

#if defined(_WIN32)

ReadableFile ReadableFile::openAtOnce(const char* fileName) { return open(fileName); }

ReadableFile::Identity ReadableFile::identity() const {
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
    BY_HANDLE_FILE_INFORMATION information = {};
    if (GetFileInformationByHandle(handle, &information) == 0) return {0, 0};
    const unsigned long long high = information.nFileIndexHigh;
    return {information.dwVolumeSerialNumber, high << 32 | information.nFileIndexLow};
}

#else

// Most pipes aren't even opened: their writer would take notice of a reader that comes and goes.
ReadableFile ReadableFile::openAtOnce(const char* fileName) {
    Status status = {};
    if (stat(fileName, &status) == 0 && S_ISFIFO(status.st_mode)) {
        errno = EINVAL;
        return {};
    }
    return ReadableFile(::open(fileName, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}

ReadableFile::Identity ReadableFile::identity() const {
    Status status = {};
    if (!status_of(descriptor, &status)) return {0, 0};
    return {status.st_dev, status.st_ino};
}

#endif

}  // namespace qvox

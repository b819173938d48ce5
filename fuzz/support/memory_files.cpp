#include "support/memory_files.h"

#include <sys/mman.h>
#include <sys/types.h>
#include <unistd.h>

#include "support/require.h"

namespace qvox_fuzz {

namespace {

constexpr int FIRST_HANDLE = 90;
constexpr const char* NAMES[FILE_COUNT] = {"/dev/fd/90", "/dev/fd/91", "/dev/fd/92", "/dev/fd/93",
                                           "/dev/fd/94"};

int handle_of(std::size_t file) { return FIRST_HANDLE + static_cast<int>(file); }

}  // namespace

// Each opening of /dev/fd/N gives a handle of its own, with a position of its own.
void make_memory_files() {
    for (std::size_t file = 0; file < FILE_COUNT; ++file) {
        const int made = memfd_create("qvox-fuzz", 0);
        require(made >= 0 && dup2(made, handle_of(file)) >= 0, "a file in memory can be made");
        close(made);
    }
}

const char* memory_file_name(std::size_t file) { return NAMES[file]; }

void set_memory_file(std::size_t file, const std::string& bytes) {
    const int handle = handle_of(file);
    const bool isWritten =
        ftruncate(handle, 0) == 0 &&
        pwrite(handle, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size());
    require(isWritten, "a file in memory can be written");
}

std::string memory_file(std::size_t file) {
    const int handle = handle_of(file);
    std::string bytes(static_cast<std::size_t>(lseek(handle, 0, SEEK_END)), '\0');
    const ssize_t count = pread(handle, bytes.data(), bytes.size(), 0);
    require(count == static_cast<ssize_t>(bytes.size()), "a file in memory can be read");
    return bytes;
}

int next_handle() {
    const int next = dup(0);
    close(next);
    return next;
}

}  // namespace qvox_fuzz

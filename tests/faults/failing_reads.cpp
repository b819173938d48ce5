// Stands in front of the C library's fread and read: the file is a folder for the moment, which the
// system refuses to read.
#include "faults/failing_reads.h"

#include <cstddef>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

namespace qvox_test {

namespace {

long untilFault = 0;
bool hasFailed = false;

class Folder {
public:
    explicit Folder(int replacedFile) : file(replacedFile), own(dup(replacedFile)) {
        const int folder = open("/", O_RDONLY | O_DIRECTORY);
        dup2(folder, file);
        close(folder);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        dup2(own, file);
        close(own);
    }

private:
    int file;
    int own;
};

bool fails() {
    if (untilFault == 0 || --untilFault != 0) return false;
    hasFailed = true;
    return true;
}

template <typename Function>
Function next(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

}  // namespace

void fail_read(long n) {
    untilFault = n;
    hasFailed = false;
}

bool read_failed() { return hasFailed; }

}  // namespace qvox_test

extern "C" {

std::size_t fread(void* to, std::size_t size, std::size_t count, std::FILE* file) {
    static const auto real = qvox_test::next<decltype(&fread)>("fread");
    if (!qvox_test::fails()) return real(to, size, count, file);
    const qvox_test::Folder folder(fileno(file));
    return real(to, size, count, file);
}

ssize_t read(int file, void* to, std::size_t count) {
    static const auto real = qvox_test::next<decltype(&read)>("read");
    if (!qvox_test::fails()) return real(file, to, count);
    const qvox_test::Folder folder(file);
    return real(file, to, count);
}

}  // extern "C"

#include "standard_output.h"

#include <cerrno>
#include <cstdlib>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

#include "output.h"

namespace {

#ifdef _WIN32

constexpr const char* NULL_DEVICE = "NUL";

int duplicate(int descriptor) { return _dup(descriptor); }
int replace(int descriptor, int by) { return _dup2(by, descriptor); }
int open_for_writing(const char* name) { return _open(name, _O_WRONLY); }

// The program writes UTF-8, with line feeds as they are.
std::FILE* open_stream(int descriptor) {
    SetConsoleOutputCP(CP_UTF8);
    _setmode(descriptor, _O_BINARY);
    return _fdopen(descriptor, "wb");
}

#else

constexpr const char* NULL_DEVICE = "/dev/null";

// Not to the number of a standard stream that happens to be closed.
int duplicate(int descriptor) { return fcntl(descriptor, F_DUPFD, 3); }
int replace(int descriptor, int by) { return dup2(by, descriptor); }
int open_for_writing(const char* name) { return open(name, O_WRONLY); }
std::FILE* open_stream(int descriptor) { return fdopen(descriptor, "wb"); }

#endif

constexpr int STANDARD_OUTPUT = 1;
constexpr int STANDARD_ERROR = 2;

// Where the library's lines go.
int open_sink() {
    for (const char* const name : {"QVOX_DEBUG", "QVOX_MEMSTAT"}) {
        if (std::getenv(name) != nullptr) return STANDARD_ERROR;
    }
    return open_for_writing(NULL_DEVICE);
}

}  // namespace

std::FILE* take_standard_output() {
    const int own = duplicate(STANDARD_OUTPUT);
    if (own < 0) throw WriteError{errno};
    if (replace(STANDARD_OUTPUT, open_sink()) < 0) throw WriteError{errno};
    std::FILE* const stream = open_stream(own);
    if (stream == nullptr) throw WriteError{errno};
    return stream;
}

#include "output.h"

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

bool WriteError::readerIsGone() const {
#ifdef _WIN32
    if (systemCode == EINVAL) return true;  // a pipe without a reader is no valid file
#endif
    return systemCode == EPIPE;
}

void Output::write(std::string_view text) {
    if (text.empty()) return;
    if (std::fwrite(text.data(), 1, text.size(), stream) != text.size()) throw WriteError{errno};
}

void Output::flush() {
    if (std::fflush(stream) != 0) throw WriteError{errno};
}

void Output::close() {
    if (std::fclose(stream) != 0) throw WriteError{errno};
}

std::FILE* standard_input() {
#ifdef _WIN32
    _setmode(_fileno(stdin), _O_BINARY);
#endif
    return stdin;
}

std::FILE* standard_output() {
#ifdef _WIN32
    if (_fileno(stdout) < 0) throw WriteError{EBADF};
    static const UINT before = GetConsoleOutputCP();
    if (SetConsoleOutputCP(CP_UTF8) != 0) std::atexit([] { SetConsoleOutputCP(before); });
    _setmode(_fileno(stdout), _O_BINARY);
    if (_fileno(stderr) >= 0) _setmode(_fileno(stderr), _O_BINARY);
#else
    // A file opened later would get the number of a closed one.
    if (fcntl(STDOUT_FILENO, F_GETFD) < 0) throw WriteError{errno};
#endif
    return stdout;
}

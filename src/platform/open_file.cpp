#include "platform/open_file.h"

#include <fcntl.h>

#ifdef _WIN32
#include <cerrno>
#include <io.h>
#include <string>
#include <sys/stat.h>

#include "platform/code_page.h"
#endif

namespace qvox {

#ifdef _WIN32

namespace {

constexpr wchar_t NO_CHARACTER = 0xFFFD;

std::wstring wide_name(const char* name) {
    std::wstring wide;
    while (*name != '\0') {
        const auto lead = static_cast<unsigned char>(*name++);
        const int single = code_page_single_to_unit(lead);
        const int pair =
            single != 0 ? 0 : code_page_pair_to_unit(lead, static_cast<unsigned char>(*name));
        if (pair != 0) ++name;
        wide += single + pair != 0 ? static_cast<wchar_t>(single + pair) : NO_CHARACTER;
    }
    return wide;
}

bool is_directory(const std::wstring& name) {
    struct _stat64 status = {};
    return _wstat64(name.c_str(), &status) == 0 && (status.st_mode & _S_IFMT) == _S_IFDIR;
}

// Whatever the system said of an empty name and of a directory, it is said as elsewhere.
void tell_cause(const std::wstring& name) {
    const int cause = errno;
    errno = name.empty() ? ENOENT : is_directory(name) ? EISDIR : cause;
}

}  // namespace

OpenFile open_for_writing(const char* fileName) {
    const std::wstring name = wide_name(fileName);
    OpenFile file(_wfopen(name.c_str(), L"wb"));
    if (file == nullptr) tell_cause(name);
    return file;
}

int open_for_reading(const char* fileName) {
    const std::wstring name = wide_name(fileName);
    const int descriptor = _wopen(name.c_str(), _O_RDONLY | _O_BINARY | _O_NOINHERIT);
    if (descriptor < 0) tell_cause(name);
    return descriptor;
}

#else

OpenFile open_for_writing(const char* fileName) { return OpenFile(std::fopen(fileName, "wb")); }

int open_for_reading(const char* fileName) { return ::open(fileName, O_RDONLY | O_CLOEXEC); }

#endif

}  // namespace qvox

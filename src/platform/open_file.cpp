#include "platform/open_file.h"

#ifdef _WIN32
#include <cerrno>
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

}  // namespace

OpenFile open_file(const char* fileName, FileUse use) {
    const std::wstring name = wide_name(fileName);
    OpenFile file(_wfopen(name.c_str(), use == FileUse::READ ? L"rb" : L"wb"));
    if (file != nullptr) return file;
    // Whatever the system says of an empty name and of a directory, it is said as elsewhere.
    const int cause = errno;
    errno = name.empty() ? ENOENT : is_directory(name) ? EISDIR : cause;
    return nullptr;
}

#else

OpenFile open_file(const char* fileName, FileUse use) {
    return OpenFile(std::fopen(fileName, use == FileUse::READ ? "rb" : "wb"));
}

#endif

}  // namespace qvox

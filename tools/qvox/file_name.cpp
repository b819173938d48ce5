#include "file_name.h"

#ifdef _WIN32
#include <cerrno>
#include <fcntl.h>
#include <io.h>
#include <memory>
#include <system_error>
#include <windows.h>

#include <qvox/qvox.h>
#endif

namespace fs = std::filesystem;

#ifdef _WIN32

namespace {

// Of a text in Shift_JIS; empty where it isn't quite the same text.
std::string narrow(const std::string& utf8) {
    const qvox::Xstring text = qvox::Xstring::fromUtf8(utf8);
    std::string result(static_cast<std::size_t>(text.length()) * 2 + 1, '\0');
    text.sjis_str(reinterpret_cast<unsigned char*>(result.data()));
    result.resize(result.find('\0'));
    return qvox::Xstring(result.c_str()).utf8() == utf8 ? result : std::string();
}

}  // namespace

std::vector<std::string> given_arguments(int /*count*/, char** /*arguments*/) {
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> arguments(
        CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
    std::vector<std::string> result;
    for (int i = 1; i < count; ++i) result.push_back(name_of(arguments.get()[i]));
    return result;
}

fs::path path_of(const std::string& name) { return fs::u8path(name); }

std::string name_of(const fs::path& path) { return path.u8string(); }

std::FILE* open_file(const std::string& name, const char* mode) {
    return _wfopen(path_of(name).c_str(),
                   std::wstring(mode, mode + std::char_traits<char>::length(mode)).c_str());
}

std::FILE* make_file(const fs::path& path) {
    const HANDLE handle =
        CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                    CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        const DWORD cause = GetLastError();
        errno = cause == ERROR_FILE_EXISTS      ? EEXIST
                : cause == ERROR_PATH_NOT_FOUND ? ENOENT
                                                : EACCES;
        return nullptr;
    }
    return _fdopen(_open_osfhandle(reinterpret_cast<std::intptr_t>(handle), _O_BINARY), "wb");
}

// What is replaced hands on its permissions and the like.
void replace_file(const fs::path& from, const fs::path& to) {
    if (ReplaceFileW(to.c_str(), from.c_str(), nullptr, 0, nullptr, nullptr) != 0) return;
    if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING) != 0) return;
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
}

// The library takes Shift_JIS. A file whose name isn't has a short one beside it as a rule.
std::string library_name(const std::string& name) {
    const std::string direct = narrow(name);
    if (!direct.empty()) return direct;
    const fs::path path = path_of(name);
    std::wstring brief(GetShortPathNameW(path.c_str(), nullptr, 0), L'\0');
    brief.resize(GetShortPathNameW(path.c_str(), brief.data(), static_cast<DWORD>(brief.size())));
    return narrow(name_of(brief));
}

#else

std::vector<std::string> given_arguments(int count, char** arguments) {
    return std::vector<std::string>(arguments + 1, arguments + count);
}

fs::path path_of(const std::string& name) { return name; }

std::string name_of(const fs::path& path) { return path.string(); }

std::FILE* open_file(const std::string& name, const char* mode) {
    return std::fopen(name.c_str(), mode);
}

std::FILE* make_file(const fs::path& path) { return std::fopen(path.c_str(), "wbx"); }

void replace_file(const fs::path& from, const fs::path& to) { fs::rename(from, to); }

std::string library_name(const std::string& name) { return name; }

#endif

#include "destination.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#include "file_name.h"

namespace {

namespace fs = std::filesystem;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

[[noreturn]] void fail(int code = errno) { throw std::system_error(code, std::generic_category()); }

OpenFile open(const fs::path& path, const char* mode) {
    OpenFile file(open_file(name_of(path), mode));
    if (file == nullptr) fail();
    return file;
}

// Also where the last link leads to nothing yet.
fs::path behind_links(fs::path path) {
    constexpr int MOST_LINKS = 40;
    for (int i = 0; fs::is_symlink(fs::symlink_status(path)); ++i) {
        if (i == MOST_LINKS) fail(ELOOP);
        path = path.parent_path() / fs::read_symlink(path);
    }
    return path;
}

void copy(std::FILE* from, Output& to) {
    char block[65536];
    for (std::size_t size = sizeof block; size == sizeof block;) {
        size = std::fread(block, 1, sizeof block, from);
        to.write({block, size});
    }
    if (std::ferror(from) != 0) fail();
}

}  // namespace

Destination::Destination(const std::optional<std::string>& fileName)
    : folder(fs::temp_directory_path()) {
    if (!fileName || *fileName == "-") return;
    target = behind_links(path_of(*fileName));
    const fs::file_status status = fs::status(*target);
    isReplaced = !fs::exists(status) || fs::is_regular_file(status);
    if (!isReplaced) return;
    // A file that mustn't be written isn't replaced either.
    if (fs::exists(status)) open(*target, "r+b");
    folder = target->parent_path();
}

void Destination::deliver(TemporaryFile& result, Output& standardOutput) const {
    if (isReplaced) return result.replace(*target);
    const OpenFile from = open(path_of(result.path()), "rb");
    if (!target) return copy(from.get(), standardOutput);
    try {
        Output device(open(*target, "wb").release());
        copy(from.get(), device);
        device.close();
    } catch (const WriteError& error) {
        fail(error.systemCode);
    }
}

#include "source_file.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>
#include <system_error>

#include "escape.h"

namespace {

namespace fs = std::filesystem;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

[[noreturn]] void fail() { throw std::system_error(errno, std::generic_category()); }

// Opens a new file that only its owner can read.
OpenFile open_temporary(std::string& path) {
    const std::string start = (fs::temp_directory_path() / "qvox-copy-").string();
    path = start + std::to_string(std::random_device()());
    OpenFile file(std::fopen(path.c_str(), "wbx"));
    if (file == nullptr) fail();
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    return file;
}

void copy(std::FILE* from, std::FILE* to) {
    char block[65536];
    for (std::size_t size = sizeof block; size == sizeof block;) {
        size = std::fread(block, 1, sizeof block, from);
        if (std::fwrite(block, 1, size, to) != size) fail();
    }
    if (std::ferror(from) != 0 || std::fflush(to) != 0) fail();
}

void append_shown(std::string& text, const std::string& fileName) {
    escape_file_name(text, fileName, Style::PLAIN);
}

}  // namespace

SourceFile::SourceFile(const std::string& fileName) : name(fileName), place(fileName) {
    std::error_code ignored;
    const fs::file_status status = fs::status(name, ignored);
    if (!fs::exists(status) || fs::is_regular_file(status) || fs::is_directory(status)) return;
    const OpenFile original(std::fopen(name.c_str(), "rb"));
    if (original == nullptr) return;
    const OpenFile temporary = open_temporary(place);
    try {
        copy(original.get(), temporary.get());
    } catch (...) {
        fs::remove(place, ignored);
        throw;
    }
}

SourceFile::~SourceFile() {
    std::error_code ignored;
    if (isCopy()) fs::remove(place, ignored);
}

void SourceFile::rename(std::string& message) const {
    if (!isCopy()) return;
    std::string shownPlace;
    std::string shownName;
    append_shown(shownPlace, place);
    append_shown(shownName, name);
    for (std::size_t at = message.find(shownPlace); at != std::string::npos;
         at = message.find(shownPlace, at + shownName.size())) {
        message.replace(at, shownPlace.size(), shownName);
    }
}

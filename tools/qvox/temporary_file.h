// A new file that doesn't outlive its use: it goes with its object, and with the process where a
// signal ends that.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

class TemporaryFile {
public:
    // Makes an empty file in the folder that only its owner can read. Throws std::system_error.
    explicit TemporaryFile(const std::filesystem::path& folder);
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    const std::string& path() const { return name; }
    // Open for writing until close().
    std::FILE* stream() const { return file; }

    // Takes the rest of another file, and is closed. Throws std::system_error.
    void fill(std::FILE* from);
    // Writes what is still to be written. Throws std::system_error where that fails.
    void close();
    // Puts the closed file in the place of another one, whose permissions it gets, or gives it a
    // name where there is none. Throws std::system_error.
    void replace(const std::filesystem::path& target);

private:
    void forget();

    std::filesystem::path place;
    std::string name;
    std::FILE* file = nullptr;
    std::filesystem::perms usual = {};  // that the system gives to new files
};

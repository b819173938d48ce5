// The document that a command reads, as a file that can be read as often as it takes.
#pragma once

#include <string>

class SourceFile {
public:
    // What isn't a regular file, such as a pipe, can be read only once: a copy of it is made.
    // Throws std::system_error if that fails.
    explicit SourceFile(const std::string& fileName);
    SourceFile(const SourceFile&) = delete;
    SourceFile& operator=(const SourceFile&) = delete;
    ~SourceFile();

    // Where to read. What can't be opened is left to whoever reads it.
    const std::string& path() const { return place; }

    // Puts the name in the place of that of the copy.
    void rename(std::string& message) const;

private:
    bool isCopy() const { return place != name; }

    const std::string name;
    std::string place;
};

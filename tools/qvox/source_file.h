// The document that a command reads, as a file that can be read as often as it takes.
#pragma once

#include <optional>
#include <string>

#include "temporary_file.h"

class SourceFile {
public:
    // What isn't a regular file, such as a pipe, can be read only once: a copy of it is made.
    // Throws std::system_error if that fails.
    explicit SourceFile(const std::string& fileName);

    // Where to read. What can't be opened is left to whoever reads it.
    const std::string& path() const { return copy ? copy->path() : place; }

    // Puts the name in the place of that of the copy.
    void rename(std::string& message) const;

private:
    const std::string name;
    const std::string place;
    std::optional<TemporaryFile> copy;
};

// Puts the name of a file in the place of its path, in a message.
void replace_name(std::string& message, const std::string& path, const std::string& name);

// The document that a command reads, as a file that can be read as often as it takes.
#pragma once

#include <optional>
#include <string>

#include "temporary_file.h"
#include "utf8_source.h"

class SourceFile {
public:
    enum Reading {
        AS_IT_IS,
        ALL_OF_UTF8,  // as a copy that the library can read, where that is needed
    };

    // What isn't a regular file, such as a pipe, can be read only once: a copy of it is made.
    // Throws std::system_error if that fails, and std::runtime_error.
    explicit SourceFile(const std::string& fileName, Reading reading = AS_IT_IS);

    // Where to read. What can't be opened is left to whoever reads it.
    const std::string& path() const { return decoded ? decoded->path() : originalPath(); }
    // Where the bytes of the document can be read.
    const std::string& originalPath() const { return copy ? copy->path() : place; }
    // What disguises characters in the text that is read; 0 for nothing.
    unsigned short mark() const { return survey.mark; }
    bool isDecoded() const { return decoded.has_value(); }

    // Puts the name in the place of that of the copy.
    void rename(std::string& message) const;

private:
    const std::string name;
    const std::string place;
    std::optional<TemporaryFile> copy;
    Utf8Survey survey;
    std::optional<TemporaryFile> decoded;

    void copyWhatIsReadOnce();
    void decode();
};

// Puts the name of a file in the place of its path, in a message.
void replace_name(std::string& message, const std::string& path, const std::string& name);

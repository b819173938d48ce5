// Where a result goes: to standard output, or to a file that keeps what it holds until the result
// is there as a whole.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "output.h"
#include "temporary_file.h"

class Destination {
public:
    // Standard output without a name, and for "-". A file is found behind symbolic links. Throws
    // std::system_error where it can't be written.
    explicit Destination(const std::optional<std::string>& fileName);

    // Where the file of the result has to be made.
    const std::filesystem::path& workshop() const { return folder; }
    // Hands the closed result over. The result takes the place of a file, or a name where there is
    // none; whatever else the destination is, such as a pipe or a device, is written to. Throws
    // std::system_error, and WriteError for standard output.
    void deliver(TemporaryFile& result, Output& standardOutput) const;

private:
    std::optional<std::filesystem::path> target;
    std::filesystem::path folder;
    bool isReplaced = false;
};

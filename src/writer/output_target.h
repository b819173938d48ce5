// Where written text goes: into a file in one of the output encodings, or into the caller's buffer.
// The sink above hands it over by blocks.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "platform/byte_sink.h"
#include "text/encoding_id.h"
#include "text/wide.h"

namespace qvox {

class OutputTarget {
public:
    OutputTarget() = default;
    OutputTarget(const OutputTarget&) = delete;
    OutputTarget& operator=(const OutputTarget&) = delete;
    virtual ~OutputTarget() = default;

    // Reports FILE_WRITE_ERR if the units can't be written.
    virtual void take(const Unit* units, std::size_t count) = 0;
};

// A file or standard output. UTF-16 goes out in the machine's byte order; any other encoding than
// UTF16, SJIS and EUC is not for output.
class FileTarget final : public OutputTarget {
public:
    FileTarget(std::unique_ptr<ByteSink> openFile, EncodingId outputEncoding)
        : file(std::move(openFile)), encoding(outputEncoding) {}

    void take(const Unit* units, std::size_t count) override;

    // Call it behind the last block. Closes the file, which an exception does too. Reports
    // FILE_WRITE_ERR if what was written didn't get out.
    void finish();

private:
    void write(const void* from, std::size_t count);

    std::unique_ptr<ByteSink> file;
    EncodingId encoding;
    std::vector<char> bytes;  // of one block
};

// A buffer of the caller, which takes as much as fits, or null to measure only.
class MemoryTarget final : public OutputTarget {
public:
    MemoryTarget(Unit* buffer, std::size_t bufferCapacity)
        : text(buffer), capacity(bufferCapacity) {}

    void take(const Unit* units, std::size_t count) override;

    // Terminates the text if there is room, and returns the units that all of it needs with its
    // terminator.
    std::size_t finish();

private:
    Unit* text;
    std::size_t capacity;
    std::size_t produced = 0;  // units, also those that didn't fit
};

}  // namespace qvox

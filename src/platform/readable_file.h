// A file that is open for reading, by the system's own calls.
#pragma once

#include <cstddef>
#include <utility>

namespace qvox {

class ReadableFile {
public:
    // A closed one.
    ReadableFile() = default;

    // Opens a file for binary reading, a pipe or a device too. Closed if that fails; errno says
    // why.
    static ReadableFile open(const char* fileName);

    // The same without waiting for the other end of a pipe.
    static ReadableFile openAtOnce(const char* fileName);

    ReadableFile(ReadableFile&& other) noexcept
        : descriptor(std::exchange(other.descriptor, NONE)) {}
    ReadableFile& operator=(ReadableFile&& other) noexcept {
        std::swap(descriptor, other.descriptor);
        return *this;
    }
    ~ReadableFile();

    bool isOpen() const { return descriptor != NONE; }
    bool isDirectory() const;
    bool isRegular() const;

    // What tells two files apart, whatever their names are.
    using Identity = std::pair<unsigned long long, unsigned long long>;
    Identity identity() const;

    // Reads up to `size` bytes, and returns how many: none at the end of the file, less than none
    // for a failure, of which errno says what it is.
    std::ptrdiff_t read(unsigned char* to, std::size_t size);

private:
    static constexpr int NONE = -1;

    explicit ReadableFile(int openDescriptor) : descriptor(openDescriptor) {}

    int descriptor = NONE;
};

}  // namespace qvox

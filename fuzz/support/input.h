// An input of libFuzzer, taken piece by piece. Behind its end everything is zero or empty.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace qvox_fuzz {

class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : at(data), end(data + size) {}

    bool isEmpty() const { return at == end; }

    unsigned byte() { return isEmpty() ? 0U : *at++; }

    // Less than `count`, which is at most 256.
    std::size_t below(std::size_t count) { return byte() % count; }

    // Up to the next SEPARATOR, which is taken and left out, or to the end.
    std::string piece() {
        static const std::string SEPARATOR = "\xFF#\xFF#";
        const std::string all(at, end);
        const std::size_t size = all.find(SEPARATOR);
        if (size == std::string::npos) {
            at = end;
            return all;
        }
        at += size + SEPARATOR.size();
        return all.substr(0, size);
    }

private:
    const std::uint8_t* at;
    const std::uint8_t* end;
};

// What a fuzzer does with an input. Each has its own.
void run(Input input);

}  // namespace qvox_fuzz

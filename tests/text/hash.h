// A function on characters or codes as one number.
#pragma once

#include <cstdint>

// Of the results for 0 to 0xFFFF, in their order.
template <typename Function>
std::uint64_t hash_of(Function function) {
    std::uint64_t hash = 0;
    for (int code = 0; code <= 0xFFFF; ++code) {
        hash = (hash ^ static_cast<std::uint64_t>(function(code))) * 0x100000001B3U;  // FNV-1a
    }
    return hash;
}

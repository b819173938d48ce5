// The bridge between a program's texts and the library's, which are UTF-16.
#pragma once

#include <filesystem>
#include <string>

#include <qvox/xstring.h>

inline qvox::Xstring wide(const char16_t* text) {
    return reinterpret_cast<const unsigned short*>(text);
}

// What turns UTF-16 into UTF-8 in C++17 is a path.
inline std::string utf8(const qvox::Xstring& text) {
    const std::u16string units(text.data(), text.data() + text.length());
    return std::filesystem::path(units).u8string();
}

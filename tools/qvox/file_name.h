// Names of files as the system has them. In the program a name is the bytes that a user gave, on
// Windows the UTF-8 of a wide name.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#ifdef _WIN32
constexpr bool CAN_OPEN_STANDARD_INPUT = false;  // by a name
#else
constexpr bool CAN_OPEN_STANDARD_INPUT = true;
#endif

// What the program was called with, without its own name.
std::vector<std::string> given_arguments(int count, char** arguments);

std::filesystem::path path_of(const std::string& name);
std::string name_of(const std::filesystem::path& path);

// As std::fopen() does.
std::FILE* open_file(const std::string& name, const char* mode);

// Makes a new file for binary writing, which can be removed while it is open. Null if that fails or
// the file is there; errno says which.
std::FILE* make_file(const std::filesystem::path& path);

// Puts a file in the place of another one in one step. Throws std::system_error.
void replace_file(const std::filesystem::path& from, const std::filesystem::path& to);

// The name by which the library opens the file.
std::string library_name(const std::string& name);

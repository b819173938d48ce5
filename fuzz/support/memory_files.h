// Files in memory, under names that are the same in each process, so that a document can name its
// external pieces and a find can be run again anywhere.
#pragma once

#include <cstddef>
#include <string>

namespace qvox_fuzz {

// The document and the pieces that it may name: "/dev/fd/91" and so on. The last one is for output.
constexpr std::size_t FILE_COUNT = 5;
constexpr std::size_t OUTPUT_FILE = FILE_COUNT - 1;

// Once, before the others.
void make_memory_files();

const char* memory_file_name(std::size_t file);

void set_memory_file(std::size_t file, const std::string& bytes);

std::string memory_file(std::size_t file);

// The number of the next file handle: the same before and after a parse.
int next_handle();

}  // namespace qvox_fuzz

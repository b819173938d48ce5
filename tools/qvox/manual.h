// The man page and the completion of bash, made from the options as --help shows them.
#pragma once

#include <string>

#include <CLI/CLI.hpp>

std::string manual_page(const CLI::App& program);
std::string bash_completion(const CLI::App& program);

// The subcommands of the program. Each has a file of its own, which declares its options and does
// its work; main.cpp lists them. A new one needs a file, a line here and a line there.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "output.h"

// What the program returns to its caller.
enum ExitStatus : int {
    ALL_GOOD = 0,
    FILE_FAILED = 1,    // at least one file
    WRONG_USE = 2,      // nothing was done
    OUTPUT_FAILED = 2,  // the work broke off
};

struct Command {
    CLI::App* options;
    std::function<ExitStatus(Output&)> run;  // once the options have been parsed
};

Command add_check(CLI::App& program);
Command add_convert(CLI::App& program);
Command add_events(CLI::App& program);
Command add_format(CLI::App& program);
Command add_tree(CLI::App& program);

// The argument FILE or FILE... of a subcommand, and what was given for it.
CLI::Option* add_file(CLI::App& options);
CLI::Option* add_files(CLI::App& options);
// The flag --no-external.
CLI::Option* add_no_external(CLI::App& options);
std::vector<std::string> given_files(const CLI::Option& files);

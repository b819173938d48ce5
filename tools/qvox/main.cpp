// The program qvox: its options, and what comes of them.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <sstream>
#include <string>
#include <vector>

#include <qvox/qvox.h>

#include "command.h"
#include "file_name.h"
#include "manual.h"
#include "output.h"

namespace {

constexpr Command (*COMMANDS[])(CLI::App&) = {add_check, add_convert, add_events, add_format,
                                              add_tree};

constexpr const char* FOOTER =
    "FILE may be - for standard input. Exit status: 0 if all files are good, 1 if a file failed,\n"
    "2 for wrong use or if the output cannot be written. NO_COLOR turns colours off.";

// What the build asks the program for.
struct Page {
    const char* option;
    std::string (*text)(const CLI::App& program);
};

constexpr Page PAGES[] = {{"--print-manual-page", manual_page},
                          {"--print-bash-completion", bash_completion}};

// CLI11 takes a value like "[a,b]" for a list, but it may be the name of a file. A NUL in front,
// which no argument can hold, keeps it whole.
const std::string LIST_GUARD(1, '\0');

// The arguments in the order in which CLI11 wants them, the last one first.
std::vector<std::string> reversed(std::vector<std::string> arguments) {
    std::reverse(arguments.begin(), arguments.end());
    for (std::string& argument : arguments) {
        if (argument.compare(0, 1, "[") == 0) argument.insert(0, LIST_GUARD);
    }
    return arguments;
}

// Help and version go to standard output, a complaint about the options to standard error.
ExitStatus answer(const CLI::App& program, const CLI::ParseError& outcome, Output& output) {
    std::ostringstream text;
    std::ostringstream complaint;
    const bool isComplaint = program.exit(outcome, text, complaint) != 0;
    output.write(text.str());
    output.close();
    std::fputs(complaint.str().c_str(), stderr);
    return isComplaint ? WRONG_USE : ALL_GOOD;
}

ExitStatus run(const std::vector<std::string>& arguments, Output& output) {
    CLI::App program("Reads XML documents in UTF-8, UTF-16, Shift_JIS, EUC-JP and ISO-2022-JP.",
                     "qvox");
    program.set_version_flag("--version", "qvox " QVOX_VERSION, "Print the version and exit");
    program.footer(FOOTER);
    program.allow_windows_style_options(false);  // a name may begin with a slash
    program.require_subcommand(1);

    std::vector<Command> commands;
    for (const auto& add : COMMANDS) commands.push_back(add(program));

    if (arguments.size() == 1) {
        for (const Page& page : PAGES) {
            if (arguments.front() != page.option) continue;
            output.write(page.text(program));
            output.close();
            return ALL_GOOD;
        }
    }
    try {
        program.parse(reversed(arguments));
    } catch (const CLI::ParseError& outcome) {
        return answer(program, outcome, output);
    }
    const auto chosen = std::find_if(commands.begin(), commands.end(), [](const Command& command) {
        return command.options->parsed();
    });
    const ExitStatus status = chosen->run(output);
    output.close();
    return status;
}

}  // namespace

CLI::Option* add_file(CLI::App& options) {
    return options.add_option("FILE", "XML document")->required();
}

CLI::Option* add_files(CLI::App& options) {
    return options.add_option("FILE", "XML documents")
        ->required()
        ->expected(1, CLI::detail::expected_max_vector_size)
        ->allow_extra_args();
}

CLI::Option* add_no_external(CLI::App& options) {
    return options.add_flag("--no-external", "Open no other file, whatever the document refers to");
}

std::vector<std::string> given_files(const CLI::Option& files) {
    std::vector<std::string> names = files.results();
    for (std::string& name : names) {
        if (name.compare(0, 1, LIST_GUARD) == 0) name.erase(0, 1);
    }
    return names;
}

int main(int argumentCount, char** arguments) {
    try {
        qvox::setReportOutput(nullptr);  // handlers and exceptions tell all of it
        Output output(standard_output());
        return run(given_arguments(argumentCount, arguments), output);
    } catch (const WriteError& error) {
        if (!error.readerIsGone()) {
            std::fprintf(stderr, "qvox: cannot write to standard output: %s\n",
                         std::strerror(error.systemCode));
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "qvox: %s\n", error.what());
    }
    return OUTPUT_FAILED;
}

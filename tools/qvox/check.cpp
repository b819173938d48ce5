// `qvox check`: whether documents can be read.
#include <string>
#include <vector>

#include "command.h"
#include "file_check.h"
#include "file_queue.h"

namespace {

ExitStatus check(const std::vector<std::string>& fileNames, const CheckOptions& options,
                 unsigned jobs, Output& output) {
    const Look look = output.look();
    ExitStatus status = ALL_GOOD;
    check_side_by_side(
        fileNames.size(), jobs,
        [&](std::size_t i) { return check_file(fileNames[i], options, look); },
        [&](const CheckOutcome& outcome) {
            output.write(outcome.text);
            if (!outcome.isGood) status = FILE_FAILED;
        });
    return status;
}

}  // namespace

Command add_check(CLI::App& program) {
    CLI::App* const options = program.add_subcommand(
        "check", "Parse files and print FILE:LINE:COLUMN: message for each bad one");
    options->footer(
        "Examples:\n"
        "  qvox check order.xml                 silent if it is good\n"
        "  qvox check -v *.xml                  each with its encoding, root and size\n"
        "  qvox check --strict -j 0 *.xml       on all cores; warnings are failures\n"
        "  qvox check --no-external - <in.xml   a document from a stranger");
    const CLI::Option* const verbose = options->add_flag(
        "-v,--verbose", "Print FILE: ok for each good one, with its encoding, root and size");
    const CLI::Option* const warnings =
        options->add_flag("-w,--warnings", "Print warnings: of entities, attributes and prefixes");
    const CLI::Option* const strict =
        options->add_flag("--strict", "Print warnings, and take them for failures");
    const CLI::Option* const noExternal = add_no_external(*options);
    const CLI::Option* const jobs =
        options->add_option("-j,--jobs", "How many files to check side by side; 0 for the cores")
            ->type_name("N")
            ->check(CLI::Range(0, 1024));
    const CLI::Option* const files = add_files(*options);

    return {options, [=](Output& output) {
                const CheckOptions given = {verbose->count() > 0, warnings->count() > 0,
                                            strict->count() > 0, noExternal->count() == 0};
                const unsigned count = jobs->count() > 0 ? jobs->as<unsigned>() : 1;
                return check(given_files(*files), given, count, output);
            }};
}

// `qvox check`: whether documents can be read.
#include <optional>

#include "command.h"
#include "document.h"
#include "escape.h"

namespace {

ExitStatus check(const std::vector<std::string>& fileNames, bool nameGoodOnes, Output& output) {
    qvox::SAXParser parser;
    ExitStatus status = ALL_GOOD;
    for (const std::string& fileName : fileNames) {
        if (const std::optional<Failure> failure = parse_document(parser, fileName)) {
            output.write(describe(fileName, *failure));
            status = FILE_FAILED;
        } else if (nameGoodOnes) {
            output.write(describe(fileName, {0, 0, "ok"}));
        }
    }
    return status;
}

}  // namespace

Command add_check(CLI::App& program) {
    CLI::App* const options = program.add_subcommand(
        "check", "Parse files and print FILE:LINE:COLUMN: message for each bad one");
    const CLI::Option* const verbose =
        options->add_flag("-v,--verbose", "Print FILE: ok for each good one");
    const CLI::Option* const files = add_files(*options);

    return {options, [=](Output& output) {
                return check(given_files(*files), verbose->count() > 0, output);
            }};
}

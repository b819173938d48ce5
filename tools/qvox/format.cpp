// `qvox format`: a document for people to read.
#include <cstdio>
#include <optional>

#include "command.h"
#include "document.h"
#include "result_text.h"
#include "target_encoding.h"
#include "written_document.h"

namespace {

ExitStatus format(const std::string& fileName, Output& output) {
    Failure failure;
    const std::optional<WrittenDocument> document = read_and_write(fileName, failure);
    if (!document) {
        std::fputs(describe(fileName, failure).c_str(), stderr);
        return FILE_FAILED;
    }
    const TargetEncoding& encoding = target_encoding("UTF-8");
    ResultText result(encoding, FORMATTED);
    result.declare(document->declaration);
    result.add(document->body, {}, {});
    output.write(encoding.encode(result.text()));
    return ALL_GOOD;
}

}  // namespace

Command add_format(CLI::App& program) {
    CLI::App* const options = program.add_subcommand(
        "format", "Print a document in UTF-8 with its elements on lines of their own, indented");
    const CLI::Option* const file = add_file(*options);

    return {options, [=](Output& output) { return format(given_files(*file).front(), output); }};
}

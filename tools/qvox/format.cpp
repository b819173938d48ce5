// `qvox format`: a document for people to read.
#include <optional>
#include <system_error>

#include "command.h"
#include "document.h"
#include "document_reader.h"
#include "document_writer.h"
#include "file_report.h"
#include "source_file.h"
#include "target_encoding.h"

namespace {

// Nothing is printed of a document that can't be read to its end.
std::optional<Failure> print(const std::string& path, Output& output) {
    const Way way = way_to_read(path);
    qvox::SAXParser parser;
    if (const auto failure = parse_document(parser, path)) return failure;
    DocumentWriter writer(*target_encoding("UTF-8"), FORMATTED, output);
    const auto failure = pass_document(path, way, writer);
    if (!failure) writer.finish();
    return failure;
}

ExitStatus format(const std::string& fileName, Output& output) {
    try {
        const SourceFile source(fileName);
        auto failure = print(source.path(), output);
        if (!failure) return ALL_GOOD;
        source.rename(failure->message);
        complain(fileName, source.path(), *failure);
    } catch (const std::system_error& error) {
        complain(fileName, {}, {0, 0, "no copy of it can be made: " + error.code().message()});
    }
    return FILE_FAILED;
}

}  // namespace

Command add_format(CLI::App& program) {
    CLI::App* const options = program.add_subcommand(
        "format", "Print a document in UTF-8 with its elements on lines of their own, indented");
    const CLI::Option* const file = add_file(*options);

    return {options, [=](Output& output) { return format(given_files(*file).front(), output); }};
}

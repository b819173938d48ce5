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
std::optional<Failure> print(const SourceFile& source, Externals externals, Output& output) {
    const std::string& path = source.path();
    const Way way = way_to_read(path, externals);
    qvox::SAXParser parser;
    parser.setFeature(qvox::FEATURE_EXTERNAL_FILES, externals == Externals::OPENED);
    if (auto failure = parse_document(parser, path)) return failure;
    DocumentWriter writer(*target_encoding("UTF-8"), FORMATTED, output);
    DisguiseRemover plain(source.mark(), writer);
    auto failure = pass_document(path, way, externals, plain);
    if (!failure) writer.finish();
    return failure;
}

ExitStatus format(const std::string& fileName, Externals externals, Output& output) {
    try {
        const SourceFile source(fileName, SourceFile::ALL_OF_UTF8);
        auto failure = print(source, externals, output);
        if (!failure) return ALL_GOOD;
        source.rename(failure->message);
        complain(fileName, source.originalPath(), *failure);
    } catch (const std::system_error& error) {
        complain(fileName, {}, {0, 0, "no copy of it can be made: " + error.code().message()});
    }
    return FILE_FAILED;
}

}  // namespace

Command add_format(CLI::App& program) {
    CLI::App* const options = program.add_subcommand(
        "format", "Print a document in UTF-8 with its elements on lines of their own, indented");
    options->footer(
        "Examples:\n"
        "  qvox format order.xml\n"
        "  qvox convert --to utf8 order.xml | qvox format -");
    const CLI::Option* const noExternal = add_no_external(*options);
    const CLI::Option* const file = add_file(*options);

    return {options, [=](Output& output) {
                return format(given_files(*file).front(), externals_of(*noExternal), output);
            }};
}

// `qvox events`: the events of documents, one a line.
#include <optional>

#include "command.h"
#include "document.h"
#include "escape.h"
#include "event_printer.h"
#include "file_report.h"

namespace {

// With several files a line with its name stands ahead of each one's events.
void print_name(const std::string& fileName, Output& output) {
    std::string line = "file \"";
    escape_file_name(line, fileName, Style::QUOTED);
    output.write(line + "\"\n");
}

// Errors go to standard error, in order with the events where both go to one place.
ExitStatus print_events(qvox::SAXParser& parser, const std::vector<std::string>& fileNames,
                        Output& output) {
    ExitStatus status = ALL_GOOD;
    for (const std::string& fileName : fileNames) {
        if (fileNames.size() > 1) print_name(fileName, output);
        EventPrinter printer(output, fileName);
        printer.attach(parser);
        if (const std::optional<Failure> failure = parse_document(parser, fileName)) {
            output.flush();
            complain(fileName, readable_path(fileName), *failure);
            status = FILE_FAILED;
        }
    }
    return status;
}

}  // namespace

Command add_events(CLI::App& program) {
    CLI::App* const options = program.add_subcommand(
        "events", "Print the events of a parse, one a line, and errors on standard error");
    options->footer(
        "Examples:\n"
        "  qvox events order.xml\n"
        "  qvox events --no-namespaces a.xml b.xml");
    const CLI::Option* const noNamespaces =
        options->add_flag("--no-namespaces", "Parse without namespace processing");
    const CLI::Option* const namespacePrefixes = options->add_flag(
        "--namespace-prefixes", "Show xmlns attributes among the attributes of a tag");
    const CLI::Option* const noExternal = add_no_external(*options);
    const CLI::Option* const files = add_files(*options);

    return {options, [=](Output& output) {
                qvox::SAXParser parser;
                parser.setFeature(qvox::FEATURE_NAMESPACES, noNamespaces->count() == 0);
                parser.setFeature(qvox::FEATURE_NAMESPACE_PREFIXES, namespacePrefixes->count() > 0);
                parser.setFeature(qvox::FEATURE_EXTERNAL_FILES, noExternal->count() == 0);
                return print_events(parser, given_files(*files), output);
            }};
}

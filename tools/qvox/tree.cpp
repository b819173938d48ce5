// `qvox tree`: the tree of a document, one node a line.
#include "command.h"
#include "document.h"
#include "external_files.h"
#include "file_report.h"
#include "tree_parse.h"
#include "tree_printer.h"

namespace {

ExitStatus print_document(qvox::DOMParser& parser, const std::string& fileName, Output& output) {
    Failure failure;
    const OwnedDocument document = parse_tree(parser, fileName, failure);
    if (document == nullptr) {
        complain(fileName, readable_path(fileName), failure);
        return FILE_FAILED;
    }
    print_tree(document.get(), output);
    return ALL_GOOD;
}

}  // namespace

Command add_tree(CLI::App& program) {
    CLI::App* const options =
        program.add_subcommand("tree", "Print the tree of a document, one node a line");
    const CLI::Option* const noNamespaces =
        options->add_flag("--no-namespaces", "Parse without namespace processing");
    const CLI::Option* const noExternal = add_no_external(*options);
    const CLI::Option* const file = add_file(*options);

    return {options, [=](Output& output) {
                qvox::DOMParser parser;
                parser.setFeature(qvox::FEATURE_NAMESPACES, noNamespaces->count() == 0);
                if (noExternal->count() > 0) refuse_external_files(parser);
                return print_document(parser, given_files(*file).front(), output);
            }};
}

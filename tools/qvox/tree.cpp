// `qvox tree`: the tree of a document, one node a line.
#include <cstdio>

#include "command.h"
#include "document.h"
#include "tree_parse.h"
#include "tree_printer.h"

namespace {

ExitStatus print_document(qvox::DOMParser& parser, const std::string& fileName, Output& output) {
    Failure failure;
    const OwnedDocument document = parse_tree(parser, fileName, failure);
    if (document == nullptr) {
        std::fputs(describe(fileName, failure).c_str(), stderr);
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
    const CLI::Option* const file = add_file(*options);

    return {options, [=](Output& output) {
                qvox::DOMParser parser;
                parser.setFeature(qvox::FEATURE_NAMESPACES, noNamespaces->count() == 0);
                return print_document(parser, given_files(*file).front(), output);
            }};
}

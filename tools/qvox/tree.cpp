// `qvox tree`: the tree of a document, one node a line.
#include <string>
#include <system_error>

#include "command.h"
#include "document.h"
#include "file_report.h"
#include "source_file.h"
#include "source_units.h"
#include "tree_parse.h"
#include "tree_printer.h"

namespace {

// The copy that was read doesn't name the encoding of the document.
void restore_declaration(qvox::Document& document, const std::string& path) {
    qvox::Node* const first = document.getFirstChild();
    if (first->getNodeType() != qvox::Node::PROCESSING_INSTRUCTION_NODE ||
        first->getNodeName() != "xml") {
        return;
    }
    const std::string declaration = xml_declaration_of(path);
    std::string data;
    for (const char* const name : {"version", "encoding", "standalone"}) {
        const std::string value = pseudo_attribute(declaration, name);
        if (value.empty()) continue;
        data += (data.empty() ? "" : " ") + std::string(name) + "=\"" + value + '"';
    }
    first->setNodeValue(data.c_str());
}

ExitStatus print_document(qvox::DOMParser& parser, const std::string& fileName, Output& output) {
    try {
        const SourceFile source(fileName, SourceFile::ALL_OF_UTF8);
        Failure failure;
        const OwnedDocument document = parse_tree(parser, source.path(), failure);
        if (document == nullptr) {
            source.rename(failure.message);
            complain(fileName, source.originalPath(), failure);
            return FILE_FAILED;
        }
        if (source.isDecoded()) restore_declaration(*document, source.originalPath());
        print_tree(document.get(), output, source.mark());
        return ALL_GOOD;
    } catch (const std::system_error& error) {
        complain(fileName, {}, {0, 0, "no copy of it can be made: " + error.code().message()});
        return FILE_FAILED;
    }
}

}  // namespace

Command add_tree(CLI::App& program) {
    CLI::App* const options =
        program.add_subcommand("tree", "Print the tree of a document, one node a line");
    options->footer(
        "Examples:\n"
        "  qvox tree order.xml\n"
        "  qvox tree --no-external order.xml");
    const CLI::Option* const noNamespaces =
        options->add_flag("--no-namespaces", "Parse without namespace processing");
    const CLI::Option* const noExternal = add_no_external(*options);
    const CLI::Option* const file = add_file(*options);

    return {options, [=](Output& output) {
                qvox::DOMParser parser;
                parser.setFeature(qvox::FEATURE_NAMESPACES, noNamespaces->count() == 0);
                parser.setFeature(qvox::FEATURE_EXTERNAL_FILES, noExternal->count() == 0);
                return print_document(parser, given_files(*file).front(), output);
            }};
}

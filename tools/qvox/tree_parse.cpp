#include "tree_parse.h"

#include "file_name.h"

void FreeDocument::operator()(qvox::Document* document) const {
    document->getImplementation()->freeDocument(document);
}

OwnedDocument parse_tree(qvox::DOMParser& parser, const std::string& fileName, Failure& failure) {
    OwnedDocument document;
    failure = {};
    const auto parse = [&] {
        document.reset(parser.parse(library_name(readable_path(fileName)).c_str()));
    };
    if (const auto found = failure_of(parse, fileName)) failure = *found;
    return document;
}

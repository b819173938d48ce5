#include "tree_parse.h"

#include <exception>
#include <filesystem>
#include <optional>
#include <system_error>

#include "escape.h"

namespace {

// A failed parse into a tree doesn't tell the place. One into events does, if the file can be read
// a second time and fails in the same way.
void find_place(const qvox::DOMParser& parser, const std::string& fileName, Failure& failure) {
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(readable_path(fileName), ignored)) return;
    qvox::SAXParser events;
    events.setFeature(qvox::FEATURE_NAMESPACES, parser.getFeature(qvox::FEATURE_NAMESPACES));
    const std::optional<Failure> again = parse_document(events, fileName);
    if (again && again->message == failure.message) failure = *again;
}

}  // namespace

void FreeDocument::operator()(qvox::Document* document) const {
    document->getImplementation()->freeDocument(document);
}

OwnedDocument parse_tree(qvox::DOMParser& parser, const std::string& fileName, Failure& failure) {
    failure = {};
    try {
        return OwnedDocument(parser.parse(readable_path(fileName).c_str()));
    } catch (const qvox::QVOXException& exception) {
        append_message(failure.message, exception.getMessage(), fileName, Style::PLAIN);
    } catch (const std::exception& exception) {
        failure.message = exception.what();
    }
    find_place(parser, fileName, failure);
    return nullptr;
}

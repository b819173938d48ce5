#include "written_document.h"

#include <utility>

namespace {

// What stands in quotes behind the name. The parser has put the data of a declaration together, in
// ASCII and with double quotes.
std::string pseudo_attribute(const std::string& data, const std::string& name) {
    const std::string start = name + "=\"";
    const std::size_t found = data.find(start);
    if (found == std::string::npos) return {};
    const std::size_t value = found + start.size();
    return data.substr(value, data.find('"', value) - value);
}

// Takes the declaration out of the tree, so that it isn't written with the rest.
std::optional<XmlDeclaration> take_declaration(qvox::DOMParser& parser, qvox::Document& document) {
    qvox::Node* const first = document.getFirstChild();
    if (first->getNodeType() != qvox::Node::PROCESSING_INSTRUCTION_NODE ||
        first->getNodeName() != "xml") {
        return std::nullopt;
    }
    const qvox::Xstring& value = first->getNodeValue();
    const std::string data(value.data(), value.data() + value.length());
    parser.freeNode(document.removeChild(first));
    return XmlDeclaration{pseudo_attribute(data, "version"), pseudo_attribute(data, "standalone")};
}

Units write(qvox::DOMParser& parser, qvox::Document& document) {
    int length = 0;
    parser.write(&document, static_cast<unsigned short*>(nullptr), &length);
    Units text(static_cast<std::size_t>(length) / sizeof(unsigned short), 0);
    parser.write(&document, text.data(), &length);
    text.pop_back();
    return text;
}

// The next node in document order, or null.
qvox::Node* following(qvox::Node* node) {
    if (qvox::Node* const child = node->getFirstChild()) return child;
    while (node != nullptr && node->getNextSibling() == nullptr) node = node->getParentNode();
    return node != nullptr ? node->getNextSibling() : nullptr;
}

unsigned specified_among(const qvox::NamedNodeMap& attributes) {
    unsigned count = 0;
    for (int i = 0; i < attributes.getLength(); ++i) {
        if (static_cast<const qvox::Attr*>(attributes.item(i))->getSpecified()) ++count;
    }
    return count;
}

}  // namespace

SpecifiedAttributes specified_attributes(qvox::Document& document) {
    SpecifiedAttributes counts;
    if (document.getDoctype() == nullptr) return counts;
    for (qvox::Node* node = &document; node != nullptr; node = following(node)) {
        if (node->getNodeType() != qvox::Node::ELEMENT_NODE) continue;
        counts.push_back(specified_among(*node->getAttributes()));
    }
    return counts;
}

std::optional<WrittenDocument> read_and_write(const std::string& fileName, Failure& failure) {
    qvox::DOMParser parser;
    OwnedDocument document = parse_tree(parser, fileName, failure);
    if (document == nullptr) return std::nullopt;
    try {
        WrittenDocument written;
        written.declaration = take_declaration(parser, *document);
        written.body = write(parser, *document);
        written.tree = std::move(document);
        return written;
    } catch (const qvox::QVOXException& exception) {
        append_message(failure.message, exception.getMessage(), fileName, Style::PLAIN);
        return std::nullopt;
    }
}

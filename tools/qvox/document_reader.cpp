#include "document_reader.h"

#include <cstring>
#include <fstream>
#include <vector>

#include "file_name.h"
#include "source_units.h"
#include "tree_parse.h"
#include "tree_source.h"

namespace {

// Looks at a document up to its root element.
class Prolog final : public MarkupCounter {
public:
    struct Seen {};

    explicit Prolog(int& place) : MarkupCounter(place) {}

    bool hasDocumentType() const { return isInDocumentType(); }

    void startElement(const qvox::Xstring& /*uri*/, const qvox::Xstring& /*localName*/,
                      const qvox::Xstring& /*qName*/,
                      const qvox::Attributes& /*attributes*/) override {
        throw Seen();
    }
    void startDTD(const qvox::Xstring& name, const qvox::Xstring& publicId,
                  const qvox::Xstring& systemId) override {
        MarkupCounter::startDTD(name, publicId, systemId);
        throw Seen();
    }

    void comment(const qvox::Xstring& /*text*/) override {}
    void endCDATA() override {}
    void startCDATA() override {}
};

bool has_document_type(const std::string& path, Externals externals) {
    int place = 0;
    Prolog prolog(place);
    qvox::SAXParser parser;
    parser.setFeature(qvox::FEATURE_EXTERNAL_FILES, externals == Externals::OPENED);
    parser.setContentHandler(&prolog);
    parser.setProperty(qvox::PROPERTY_LEXICAL_HANDLER, static_cast<qvox::LexicalHandler*>(&prolog));
    try {
        parse_document(parser, path);
    } catch (const Prolog::Seen&) {
    }
    return prolog.hasDocumentType();
}

// Whether there is anything to look at: most documents have no references to characters.
bool has_number_sign(const std::string& path) {
    std::ifstream file(path_of(path), std::ios::binary);
    std::vector<char> block(65536);
    while (file) {
        file.read(block.data(), static_cast<std::streamsize>(block.size()));
        const auto size = static_cast<std::size_t>(file.gcount());
        if (std::memchr(block.data(), '#', size) != nullptr) return true;
    }
    return false;
}

// "&#13;" and "&#xD;", with any number of zeros.
bool has_carriage_return_reference(const std::string& path) {
    if (!has_number_sign(path)) return false;
    SourceUnits units(path);
    int unit = units.next();
    while (unit != SourceUnits::END) {
        if (unit != '#') {
            unit = units.next();
            continue;
        }
        unit = units.next();
        const bool isHexadecimal = unit == 'x';
        if (isHexadecimal) unit = units.next();
        while (unit == '0') unit = units.next();
        if (isHexadecimal) {
            if (unit == 'd' || unit == 'D') return true;
        } else if (unit == '1') {
            unit = units.next();
            if (unit == '3') return true;
        }
    }
    return false;
}

void pass_declaration(const std::string& path, DocumentSink& sink) {
    const std::string declaration = xml_declaration_of(path);
    if (declaration.empty()) return;
    sink.xmlDeclaration(
        {pseudo_attribute(declaration, "version"), pseudo_attribute(declaration, "standalone")});
}

}  // namespace

Way way_to_read(const std::string& path, Externals externals) {
    return has_document_type(path, externals) || has_carriage_return_reference(path) ? Way::TREE
                                                                                     : Way::EVENTS;
}

std::optional<Failure> pass_events(const std::string& path, Externals externals,
                                   qvox::ErrorHandler* errorHandler, DocumentSink& sink, int& place,
                                   Findings& findings) {
    EventSource source(sink, place);
    qvox::SAXParser parser;
    parser.setFeature(qvox::FEATURE_EXTERNAL_FILES, externals == Externals::OPENED);
    parser.setErrorHandler(errorHandler);
    source.attach(parser);
    pass_declaration(path, sink);
    std::optional<Failure> failure = parse_document(parser, path);
    findings = {source.literals(), source.placeOfDocumentType(), source.lostMarkup(),
                source.repetitions()};
    return failure;
}

std::optional<Failure> pass_nodes(const std::string& path, Externals externals,
                                  const Literals& literals, DocumentSink& sink) {
    qvox::DOMParser parser;
    parser.setFeature(qvox::FEATURE_EXTERNAL_FILES, externals == Externals::OPENED);
    Failure failure;
    const OwnedDocument document = parse_tree(parser, path, failure);
    if (document == nullptr) return failure;
    pass_declaration(path, sink);
    pass_tree(*document, literals, sink);
    return std::nullopt;
}

std::optional<Failure> pass_document(const std::string& path, Way way, Externals externals,
                                     DocumentSink& sink) {
    int place = 0;
    Findings findings;
    if (way == Way::EVENTS) return pass_events(path, externals, nullptr, sink, place, findings);
    NullSink nobody;
    if (auto failure = pass_events(path, externals, nullptr, nobody, place, findings)) {
        return failure;
    }
    return pass_nodes(path, externals, findings.literals, sink);
}

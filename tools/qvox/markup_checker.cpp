#include "markup_checker.h"

#include <algorithm>

#include "escape.h"

namespace {

std::string shown(UnitView text) {
    std::string out;
    escape_units(out, text.data(), static_cast<int>(text.size()), Style::PLAIN);
    return out;
}

// They are declared by their being.
bool is_reserved(UnitView prefix) {
    const auto is = [prefix](std::string_view name) {
        return std::equal(prefix.begin(), prefix.end(), name.begin(), name.end());
    };
    return is("xml") || is("xmlns");
}

}  // namespace

void MarkupChecker::attach(qvox::SAXParser& parser) {
    parser.setContentHandler(this);
    parser.setProperty(qvox::PROPERTY_LEXICAL_HANDLER, static_cast<qvox::LexicalHandler*>(this));
}

void MarkupChecker::processingInstruction(const qvox::Xstring& /*target*/,
                                          const qvox::Xstring& /*data*/) {
    countMarkup();
}

void MarkupChecker::comment(const qvox::Xstring& /*text*/) { countMarkup(); }

void MarkupChecker::startElement(const qvox::Xstring& uri, const qvox::Xstring& /*localName*/,
                                 const qvox::Xstring& qName, const qvox::Attributes& attributes) {
    countMarkup();
    if (elementCount++ == 0) rootName = shown(view_of(qName));
    checkPrefix(qName, uri);
    const int length = attributes.getLength();
    std::vector<UnitView> names;
    for (int i = 0; i < length; ++i) {
        checkPrefix(attributes.getQName(i), attributes.getURI(i));
        names.push_back(view_of(attributes.getQName(i)));
    }
    std::sort(names.begin(), names.end());
    for (auto twice = std::adjacent_find(names.begin(), names.end()); twice != names.end();
         twice = std::adjacent_find(twice + 1, names.end())) {
        found.push_back({place(), "attribute " + shown(*twice) + " stands twice in a tag"});
    }
}

void MarkupChecker::checkPrefix(const qvox::Xstring& qName, const qvox::Xstring& uri) {
    const UnitView name = view_of(qName);
    const std::size_t colon = name.find(':');
    if (colon == UnitView::npos || !uri.isNull()) return;
    const UnitView prefix = name.substr(0, colon);
    if (is_reserved(prefix) || !undeclaredPrefixes.emplace(prefix).second) return;
    found.push_back({place(), "prefix " + shown(prefix) + " is not declared"});
}

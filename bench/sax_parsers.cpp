#include "sax_parsers.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace bench {
namespace {

std::vector<SaxParser>& registry() {
    static std::vector<SaxParser> parsers;
    return parsers;
}

std::pair<bool, std::string> place(const SaxParser& parser) {
    return {parser.name != "qvox", parser.name};
}

}  // namespace

const std::vector<SaxParser>& saxParsers() { return registry(); }

const SaxParser& saxParser(const std::string& name) {
    const auto found = std::find_if(registry().begin(), registry().end(),
                                    [&name](const SaxParser& one) { return one.name == name; });
    if (found == registry().end()) throw std::invalid_argument("no parser " + name);
    return *found;
}

SaxParserRegistration::SaxParserRegistration(const SaxParser& parser) {
    registry().push_back(parser);
    std::sort(registry().begin(), registry().end(),
              [](const SaxParser& a, const SaxParser& b) { return place(a) < place(b); });
}

}  // namespace bench

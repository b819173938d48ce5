#include "parser/features.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>

#include <qvox/parser.h>

namespace qvox {

namespace {

constexpr std::size_t MESSAGE_SIZE = 256;

// How the messages about one kind of entry begin; the name and the rest of the sentence follow.
struct Wording {
    const char* notRecognized;  // before "%s not recognized"
    const char* notSupported;   // before "%s is not supported"
};

constexpr Wording FEATURE_WORDING = {"feature", "feature"};
constexpr Wording READ_PROPERTY_WORDING = {"property", "property"};
constexpr Wording WRITE_PROPERTY_WORDING = {"property", "to set property"};

template <typename Exception>
[[noreturn]] void refuse(const char* beginning, const char* name, const char* end) {
    char message[MESSAGE_SIZE];
    std::snprintf(message, sizeof message, "%s %s %s", beginning, name, end);
    throw Exception(message);
}

struct Entry {
    const char* name;
    Access parsingAccess;  // during a parse
    Access idleAccess;     // otherwise
    int value;             // of a feature at first, or the slot of a property
};

constexpr Entry FEATURES[] = {
    {FEATURE_NAMESPACES, READ_ACCESS, WRITE_ACCESS, true},
    {FEATURE_NAMESPACE_PREFIXES, READ_ACCESS, WRITE_ACCESS, false},
    {FEATURE_VALIDATION, READ_ACCESS, READ_ACCESS, false},
    {FEATURE_EXTERNAL_GENERAL_ENTITIES, READ_ACCESS, WRITE_ACCESS, true},
    {FEATURE_EXTERNAL_PARAMETER_ENTITIES, READ_ACCESS, WRITE_ACCESS, true},
    {FEATURE_EXTERNAL_FILES, READ_ACCESS, WRITE_ACCESS, true},
    {FEATURE_CONCURRENT, READ_ACCESS, WRITE_ACCESS, false},
};
static_assert(std::size(FEATURES) == ParserImpl::FEATURE_COUNT);

constexpr Entry PROPERTIES[] = {
    {PROPERTY_LEXICAL_HANDLER, WRITE_ACCESS, WRITE_ACCESS, LEXICAL_HANDLER_SLOT},
    {PROPERTY_DECL_HANDLER, WRITE_ACCESS, WRITE_ACCESS, DECL_HANDLER_SLOT},
    {PROPERTY_DOM_NODE, NO_ACCESS, NO_ACCESS, DOM_NODE_SLOT},
};

// The names are looked up at events, most of them by our own constants.
bool is_same(const char* a, const char* b) { return a == b || std::strcmp(a, b) == 0; }

// The number of the entry of `name`, if the access that it grants at the moment is enough.
template <std::size_t count>
std::size_t accessible(const Entry (&entries)[count], const char* nameOrNull, bool parsing,
                       Access needed, const Wording& wording) {
    const char* name = nameOrNull != nullptr ? nameOrNull : "(null)";
    const Entry* const entry =
        std::find_if(std::begin(entries), std::end(entries),
                     [name](const Entry& candidate) { return is_same(candidate.name, name); });
    if (entry == std::end(entries)) {
        refuse<SAXNotRecognizedException>(wording.notRecognized, name, "not recognized");
    }
    if ((parsing ? entry->parsingAccess : entry->idleAccess) < needed) {
        refuse<SAXNotSupportedException>(
            wording.notSupported, name,
            parsing ? "is not supported in parsing" : "is not supported");
    }
    return static_cast<std::size_t>(entry - entries);
}

}  // namespace

ParserImpl::ParserImpl() {
    for (std::size_t i = 0; i < FEATURE_COUNT; ++i) values[i] = FEATURES[i].value != 0;
}

bool ParserImpl::feature(const char* name, bool parsing) const {
    return values[accessible(FEATURES, name, parsing, READ_ACCESS, FEATURE_WORDING)];
}

void ParserImpl::setFeature(const char* name, bool value, bool parsing) {
    values[accessible(FEATURES, name, parsing, WRITE_ACCESS, FEATURE_WORDING)] = value;
}

int ParserImpl::readableProperty(const char* name, bool parsing) {
    return PROPERTIES[accessible(PROPERTIES, name, parsing, READ_ACCESS, READ_PROPERTY_WORDING)]
        .value;
}

int ParserImpl::writableProperty(const char* name, bool parsing) {
    return PROPERTIES[accessible(PROPERTIES, name, parsing, WRITE_ACCESS, WRITE_PROPERTY_WORDING)]
        .value;
}

}  // namespace qvox

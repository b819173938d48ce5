#include "parser/features.h"

#include <cstdio>
#include <string_view>

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

// The entry of `name`, if the access that it grants at the moment is enough.
template <typename Entries>
auto& accessible(Entries& entries, const char* nameOrNull, bool parsing, int needed,
                 const Wording& wording) {
    const char* name = nameOrNull != nullptr ? nameOrNull : "(null)";
    const auto found = entries.find(std::string_view(name));
    if (found == entries.end()) {
        refuse<SAXNotRecognizedException>(wording.notRecognized, name, "not recognized");
    }
    auto& entry = found->second;
    if ((parsing ? entry.parsingAccess : entry.idleAccess) < needed) {
        refuse<SAXNotSupportedException>(
            wording.notSupported, name,
            parsing ? "is not supported in parsing" : "is not supported");
    }
    return entry;
}

}  // namespace

ParserImpl::ParserImpl()
    : features{
          {FEATURE_NAMESPACES, {READ_ACCESS, WRITE_ACCESS, true}},
          {FEATURE_NAMESPACE_PREFIXES, {READ_ACCESS, WRITE_ACCESS, false}},
          {FEATURE_VALIDATION, {READ_ACCESS, READ_ACCESS, false}},
          {FEATURE_EXTERNAL_GENERAL_ENTITIES, {READ_ACCESS, WRITE_ACCESS, true}},
          {FEATURE_EXTERNAL_PARAMETER_ENTITIES, {READ_ACCESS, WRITE_ACCESS, true}},
          {FEATURE_EXTERNAL_FILES, {READ_ACCESS, WRITE_ACCESS, true}},
          {FEATURE_CONCURRENT, {READ_ACCESS, WRITE_ACCESS, false}},
      },
      properties{
          {PROPERTY_LEXICAL_HANDLER, {WRITE_ACCESS, WRITE_ACCESS, LEXICAL_HANDLER_SLOT}},
          {PROPERTY_DECL_HANDLER, {WRITE_ACCESS, WRITE_ACCESS, DECL_HANDLER_SLOT}},
          {PROPERTY_DOM_NODE, {NO_ACCESS, NO_ACCESS, DOM_NODE_SLOT}},
      } {}

bool ParserImpl::feature(const char* name, bool parsing) const {
    return accessible(features, name, parsing, READ_ACCESS, FEATURE_WORDING).value;
}

void ParserImpl::setFeature(const char* name, bool value, bool parsing) {
    accessible(features, name, parsing, WRITE_ACCESS, FEATURE_WORDING).value = value;
}

int ParserImpl::readableProperty(const char* name, bool parsing) const {
    return accessible(properties, name, parsing, READ_ACCESS, READ_PROPERTY_WORDING).slot;
}

int ParserImpl::writableProperty(const char* name, bool parsing) const {
    return accessible(properties, name, parsing, WRITE_ACCESS, WRITE_PROPERTY_WORDING).slot;
}

}  // namespace qvox

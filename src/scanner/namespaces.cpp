#include "scanner/namespaces.h"

#include <map>
#include <string>
#include <string_view>

#include <qvox/xstring.h>

namespace qvox {

namespace {

using Prefix = std::basic_string_view<Unit, UnitTraits>;

constexpr char XMLNS[] = "xmlns";
constexpr char XMLNS_PREFIX[] = "xmlns:";
constexpr int XMLNS_PREFIX_LENGTH = sizeof XMLNS_PREFIX - 1;

// The innermost declaration of each prefix; the empty prefix stands for the default namespace.
// A name is resolved by one lookup, however deep the element lies.
std::map<Prefix, PrefixMapping*> mappingsInForce;

// A mapping of an empty prefix ("xmlns:") is never found: an empty prefix counts as none.
constexpr Unit UNREACHABLE_PREFIX[] = {':', 0};

Prefix key_of(const PrefixMapping& mapping) {
    if (mapping.prefix == nullptr) return {};
    return *mapping.prefix == 0 ? UNREACHABLE_PREFIX : mapping.prefix;
}

void put_in_force(PrefixMapping& mapping) {
    PrefixMapping*& innermost = mappingsInForce[key_of(mapping)];
    if (innermost != nullptr && innermost->tag == mapping.tag) return;
    mapping.inForce = true;
    mapping.shadowed = innermost;
    innermost = &mapping;
}

void take_out_of_force(const PrefixMapping& mapping) {
    if (!mapping.inForce) return;
    const auto entry = mappingsInForce.find(key_of(mapping));
    if (mapping.shadowed == nullptr) {
        mappingsInForce.erase(entry);
    } else {
        entry->second = mapping.shadowed;
    }
}

const Unit* uri_of(Prefix prefix) {
    if (mappingsInForce.empty()) return nullptr;
    const auto found = mappingsInForce.find(prefix);
    return found != mappingsInForce.end() ? found->second->uri : nullptr;
}

struct SplitName {
    Prefix prefix;  // empty for a name without one
    const Unit* local;
};

SplitName split_qname(const Unit* qName) {
    const Unit* colon = wide_find_unit(qName, ':');
    if (colon == nullptr) return {{}, qName};
    return {Prefix(qName, static_cast<std::size_t>(colon - qName)), colon + 1};
}

// The prefix that an attribute of this name declares, by its place behind "xmlns:"; null for
// "xmlns". False for an attribute that declares nothing.
bool declares_namespace(const Unit* qName, const Unit*& prefix) {
    if (wide_narrow_ncompare(qName, XMLNS_PREFIX, XMLNS_PREFIX_LENGTH) == 0) {
        prefix = qName + XMLNS_PREFIX_LENGTH;
        return true;
    }
    prefix = nullptr;
    return wide_narrow_compare(qName, XMLNS) == 0;
}

}  // namespace

void namespaces_start() { mappingsInForce.clear(); }

void collect_namespace_decls(TagRecord& tag, bool namespaces) {
    for (AttributeRecord& attribute : tag.attributes) {
        const Unit* prefix = nullptr;
        if (!declares_namespace(attribute.qName, prefix)) continue;
        attribute.isNamespaceDecl = true;
        if (!namespaces) continue;
        // A URI is asked for as long as the element is open.
        attribute.value = halloc_copy(parseHeap, attribute.value, wide_length(attribute.value));
        tag.prefixMappings.append({prefix, attribute.value, &tag, nullptr, false});
    }
    // Only now, since the array has its place in memory when the last one is in it.
    for (PrefixMapping& mapping : tag.prefixMappings) put_in_force(mapping);
}

void leave_namespace_decls(const TagRecord& tag) {
    for (const PrefixMapping& mapping : tag.prefixMappings) take_out_of_force(mapping);
}

void resolve_element(TagRecord& tag) {
    const SplitName name = split_qname(tag.qName);
    tag.localName = name.local;
    tag.uri = uri_of(name.prefix);
}

void resolve_attribute(AttributeRecord& attribute) {
    const SplitName name = split_qname(attribute.qName);
    attribute.localName = name.local;
    if (!name.prefix.empty()) attribute.uri = uri_of(name.prefix);
}

}  // namespace qvox

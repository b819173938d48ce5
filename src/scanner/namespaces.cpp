#include "scanner/namespaces.h"

namespace qvox {

namespace {

using Prefix = std::basic_string_view<Unit, UnitTraits>;

constexpr char XMLNS[] = "xmlns";
constexpr char XMLNS_PREFIX[] = "xmlns:";
constexpr int XMLNS_PREFIX_LENGTH = sizeof XMLNS_PREFIX - 1;

// A mapping of an empty prefix ("xmlns:") is never found: an empty prefix counts as none.
constexpr Unit UNREACHABLE_PREFIX[] = {':', 0};

Prefix key_of(const PrefixMapping& mapping) {
    if (mapping.prefix == nullptr) return {};
    return *mapping.prefix == 0 ? UNREACHABLE_PREFIX : mapping.prefix;
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

void Namespaces::collect_namespace_decls(TagRecord& tag, bool namespaces) {
    for (AttributeRecord& attribute : tag.attributes) {
        const Unit* prefix = nullptr;
        if (!declares_namespace(attribute.qName, prefix)) continue;
        attribute.isNamespaceDecl = true;
        if (!namespaces) continue;
        // A URI is asked for as long as the element is open.
        attribute.value = heap.halloc_copy(attribute.value, wide_length(attribute.value));
        tag.prefixMappings.append(heap, {prefix, attribute.value, &tag, nullptr, false});
    }
    // Only now, since the array has its place in memory when the last one is in it.
    for (PrefixMapping& mapping : tag.prefixMappings) put_in_force(mapping);
}

void Namespaces::put_in_force(PrefixMapping& mapping) {
    PrefixMapping*& innermost = mappingsInForce[key_of(mapping)];
    if (innermost != nullptr && innermost->tag == mapping.tag) return;
    mapping.inForce = true;
    mapping.shadowed = innermost;
    innermost = &mapping;
}

void Namespaces::take_out_of_force(const PrefixMapping& mapping) {
    if (!mapping.inForce) return;
    const auto entry = mappingsInForce.find(key_of(mapping));
    if (mapping.shadowed == nullptr) {
        mappingsInForce.erase(entry);
    } else {
        entry->second = mapping.shadowed;
    }
}

const Unit* Namespaces::uri_of(Prefix prefix) const {
    if (mappingsInForce.empty()) return nullptr;
    const auto found = mappingsInForce.find(prefix);
    return found != mappingsInForce.end() ? found->second->uri : nullptr;
}

void Namespaces::leave_namespace_decls(const TagRecord& tag) {
    for (const PrefixMapping& mapping : tag.prefixMappings) take_out_of_force(mapping);
}

void Namespaces::resolve_element(TagRecord& tag) const {
    const SplitName name = split_qname(tag.qName);
    tag.localName = name.local;
    tag.uri = uri_of(name.prefix);
}

void Namespaces::resolve_attribute(AttributeRecord& attribute) const {
    const SplitName name = split_qname(attribute.qName);
    attribute.localName = name.local;
    if (!name.prefix.empty()) attribute.uri = uri_of(name.prefix);
}

}  // namespace qvox

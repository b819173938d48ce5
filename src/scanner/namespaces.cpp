#include "scanner/namespaces.h"

namespace qvox {

void Namespaces::collect_namespace_decls(TagRecord& tag, bool namespaces) {
    for (AttributeRecord& attribute : tag.attributes) {
        const Name& name = names.split(*attribute.qName);
        const bool isDefault = &name == &names.xmlns();
        if (!isDefault && name.prefix != &names.xmlns()) continue;
        attribute.isNamespaceDecl = true;
        if (!namespaces) continue;
        Name* prefix = isDefault ? nullptr : name.localPart;
        const auto index = static_cast<std::size_t>(&attribute - tag.attributes.begin());
        tag.prefixMappings.append(heap, prefix, index, nullptr, &tag, nullptr, false);
    }
    // Only now, since the array has its place in memory when the last one is in it.
    for (PrefixMapping& mapping : tag.prefixMappings) put_in_force(mapping);
}

void Namespaces::take_uris(TagRecord& tag) {
    for (PrefixMapping& mapping : tag.prefixMappings) {
        const AttributeRecord& attribute = tag.attributes.begin()[mapping.attribute];
        mapping.uri = &names.keep(attribute.value, attribute.length);
    }
}

// An empty prefix ("xmlns:") is never asked for: in a name it counts as none.
PrefixMapping*& Namespaces::innermost(const PrefixMapping& mapping) {
    return mapping.prefix != nullptr ? mapping.prefix->mapping : defaultMapping;
}

void Namespaces::put_in_force(PrefixMapping& mapping) {
    PrefixMapping*& current = innermost(mapping);
    if (current != nullptr && current->tag == mapping.tag) return;
    mapping.inForce = true;
    mapping.shadowed = current;
    current = &mapping;
}

void Namespaces::leave_namespace_decls(const TagRecord& tag) {
    for (const PrefixMapping& mapping : tag.prefixMappings) {
        if (mapping.inForce) innermost(mapping) = mapping.shadowed;
    }
}

const Name* Namespaces::element_uri(Name& qName) const {
    const Name* prefix = names.split(qName).prefix;
    const PrefixMapping* mapping = prefix != nullptr ? prefix->mapping : defaultMapping;
    return mapping != nullptr ? mapping->uri : nullptr;
}

const Name* Namespaces::attribute_uri(Name& qName) const {
    const Name* prefix = names.split(qName).prefix;
    return prefix != nullptr && prefix->mapping != nullptr ? prefix->mapping->uri : nullptr;
}

}  // namespace qvox

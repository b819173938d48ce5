#include "scanner/attributes.h"

#include "scanner/attribute_value.h"

namespace qvox {

void TagAttributes::apply_declaration(TagRecord& tag, const ElementRecord& declaration) {
    ++tagNumber;
    for (AttributeRecord& attribute : tag.attributes) {
        AttDefRecord* definition = find_att_def(declaration, *attribute.qName);
        attribute.decl = definition;
        if (definition != nullptr) definition->seenInTag = tagNumber;
    }
    for (AttDefRecord* definition : declaration.defaults) {
        AttDefRecord* first = definition->firstOfName;
        if (first->seenInTag == tagNumber) continue;
        first->seenInTag = tagNumber;
        append_default(tag, *definition);
    }
}

// Its units count, and those of its name, or a long default would make much of many short tags.
void TagAttributes::append_default(TagRecord& tag, const AttDefRecord& definition) {
    expansion.count(weight::DEFAULT_ATTRIBUTE +
                    static_cast<Amount>(definition.name->text.length()) +
                    wide_length(definition.normalized));
    tag.attributes.append(heap, definition.firstOfName, nullptr, nullptr, definition.name,
                          definition.normalized, wide_length(definition.normalized), true, false,
                          false);
}

void TagAttributes::normalize(TagRecord& tag, Heap& values) {
    for (AttributeRecord& attribute : tag.attributes) {
        if (!attribute.specified) continue;
        const Unit* type = attribute.decl != nullptr ? attribute.decl->type->units() : nullptr;
        if (attribute.isLent) {
            if (is_cdata(type)) continue;
            attribute.value = values.halloc_copy(attribute.value, attribute.length);
            attribute.isLent = false;
        }
        attribute.length = normalize_att_value(type, attribute.value);
    }
}

void TagAttributes::resolve(TagRecord& tag) const {
    AttributeRecord* kept = tag.attributes.begin();
    for (AttributeRecord& attribute : tag.attributes) {
        if (attribute.isNamespaceDecl) {
            if (!options.prefixes) continue;
            attribute.localName = &names.xmlns();
        } else if (options.namespaces) {
            attribute.localName = names.split(*attribute.qName).localPart;
            attribute.uri = namespaces.attribute_uri(*attribute.qName);
        }
        if (kept != &attribute) *kept = attribute;
        ++kept;
    }
    tag.attributes.shrink(static_cast<std::size_t>(kept - tag.attributes.begin()));
}

}  // namespace qvox

#include "scanner/attributes.h"

#include "scanner/attribute_value.h"

namespace qvox {

namespace {

constexpr Unit XMLNS[] = {'x', 'm', 'l', 'n', 's', 0};

}  // namespace

void TagAttributes::apply_declaration(TagRecord& tag, const ElementRecord& declaration) {
    ++tagNumber;
    for (AttributeRecord& attribute : tag.attributes) {
        AttDefRecord* definition = find_att_def(declaration, attribute.qName);
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
    expansion.count(weight::DEFAULT_ATTRIBUTE + wide_length(definition.name) +
                    wide_length(definition.normalized));
    tag.attributes.append(
        heap, {definition.firstOfName, nullptr, nullptr, definition.name, definition.normalized, false, false});
}

void TagAttributes::finish(TagRecord& tag) const {
    std::size_t kept = 0;
    for (AttributeRecord& attribute : tag.attributes) {
        if (attribute.specified) {
            normalize_att_value(attribute.decl != nullptr ? attribute.decl->type : nullptr,
                                attribute.value);
        }
        if (attribute.isNamespaceDecl) {
            if (!options.prefixes) continue;
            attribute.localName = XMLNS;
        } else if (options.namespaces) {
            namespaces.resolve_attribute(attribute);
        }
        tag.attributes.begin()[kept++] = attribute;
    }
    tag.attributes.shrink(kept);
}

}  // namespace qvox

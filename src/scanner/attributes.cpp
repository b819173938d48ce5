#include "scanner/attributes.h"

namespace qvox {

namespace {

constexpr Unit XMLNS[] = {'x', 'm', 'l', 'n', 's', 0};

bool is_cdata(const Unit* type) {
    return type == nullptr || wide_narrow_compare(type, "CDATA") == 0;
}

// A tab becomes a blank, and so does a run of line ends, which a tab ends.
void blank_white_space(Unit* value) {
    Unit* to = value;
    bool afterLineEnd = false;
    for (const Unit* from = value; *from != 0; ++from) {
        const bool isLineEnd = *from == '\n' || *from == '\r';
        if (isLineEnd && afterLineEnd) continue;
        *to++ = isLineEnd || *from == '\t' ? Unit{' '} : *from;
        afterLineEnd = isLineEnd;
    }
    *to = 0;
}

// Blanks at the start and at the end go, and every blank behind a blank.
void collapse_blanks(Unit* value) {
    Unit* to = value;
    for (const Unit* from = value; *from != 0; ++from) {
        if (*from == ' ' && (to == value || to[-1] == ' ')) continue;
        *to++ = *from;
    }
    if (to != value && to[-1] == ' ') --to;
    *to = 0;
}

// Normalises a value in place (XML 1.0, attribute-value normalisation). `type` is null for an
// attribute without declaration.
void normalize_att_value(const Unit* type, Unit* value) {
    blank_white_space(value);
    if (!is_cdata(type)) collapse_blanks(value);
}

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

// The declared default stays as it is; one normalised copy serves all tags. Its units count, and
// those of its name, or a long default would make much of many short tags.
void TagAttributes::append_default(TagRecord& tag, AttDefRecord& definition) {
    const AttDefRecord* first = definition.firstOfName;
    if (definition.normalized == nullptr) {
        definition.normalized = heap.halloc_copy(definition.value, wide_length(definition.value));
        normalize_att_value(first->type, definition.normalized);
    }
    expansion.count(weight::DEFAULT_ATTRIBUTE + wide_length(definition.name) +
                    wide_length(definition.normalized));
    tag.attributes.append(
        heap, {first, nullptr, nullptr, definition.name, definition.normalized, false, false});
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

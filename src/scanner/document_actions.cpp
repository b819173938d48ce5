#include "scanner/document_actions.h"

#include "runtime/report.h"
#include "text/temporaries.h"

namespace qvox {

namespace {

constexpr std::size_t USUAL_DEPTH = 16;

}  // namespace

Elements::Elements(Heap& parseHeap, Events& eventsOfParse, Expansion& expansion,
                   Names& namesOfParse, NamespaceOptions namespaceOptions)
    : heap(parseHeap),
      events(eventsOfParse),
      names(namesOfParse),
      options(namespaceOptions),
      namespaces(parseHeap, namesOfParse),
      attributes(parseHeap, expansion, namesOfParse, namespaces, namespaceOptions) {
    tagStack.reserve(USUAL_DEPTH);
}

void Elements::begin_tag() {
    values.clear();
    if (openTags == tagStack.size()) tagStack.push_back(heap.halloc_record<TagRecord>());
    TagRecord& tag = *tagStack[openTags];
    tag.attributes.shrink(0);
    tag.prefixMappings.shrink(0);
    tag.uri = nullptr;
    tag.localName = nullptr;
    tagInHand = &tag;
}

void Elements::drop_tag() { tagInHand = innermost(); }

void Elements::end_values() {
    for (AttributeRecord& attribute : tagInHand->attributes) {
        if (attribute.isLent) attribute.value[attribute.length] = 0;
    }
}

void Elements::start_element(Name& qName) {
    process_start_tag(qName);
    if (!tagInHand->prefixMappings.empty()) events.ev_start_prefix_mappings(*tagInHand);
    events.ev_start_element(*tagInHand);
}

// With namespaces on, an element is matched with the declaration of its local name.
void Elements::process_start_tag(Name& qName) {
    TagRecord& tag = *tagInHand;
    tag.qName = &qName;
    ++openTags;
    namespaces.collect_namespace_decls(tag, options.namespaces);
    if (options.namespaces) tag.localName = names.split(qName).localPart;
    const Name& declaredName = options.namespaces ? *tag.localName : qName;
    if (const ElementRecord* const declaration = declaredName.element()) {
        attributes.apply_declaration(tag, *declaration);
    }
    attributes.normalize(tag, values);
    namespaces.take_uris(tag);
    if (options.namespaces) tag.uri = namespaces.element_uri(qName);
    attributes.resolve(tag);
}

// The element has ended before its name is compared.
void Elements::end_element(const Name& qName) {
    events.ev_end_element(*tagInHand);
    if (!tagInHand->prefixMappings.empty()) events.ev_end_prefix_mappings(*tagInHand);
    end_tag(qName);
}

void Elements::end_tag(const Name& qName) {
    check_end_tag(qName);
    namespaces.leave_namespace_decls(*innermost());
    --openTags;
    tagInHand = innermost();
}

void Elements::check_end_tag(const Name& qName) const {
    if (openTags == 0) {
        qvox_report(REPORT_ERROR, QVOXException::UNBALANCED_TAG_ERR, "unbalanced end tag (%s)",
                    OsTemp(qName.units()).get());
    }
    const Name* open = innermost()->qName;
    if (open != &qName) {
        qvox_report(REPORT_ERROR, QVOXException::UNBALANCED_TAG_ERR,
                    "end tag (%s) not match to start tag (%s)", OsTemp(qName.units()).get(),
                    OsTemp(open->units()).get());
    }
}

void Elements::end() const {
    if (openTags == 0) return;
    qvox_report(REPORT_FATAL, QVOXException::INTERNAL_ERR, "tag stack abnormal end : sp = %zu",
                openTags);
}

}  // namespace qvox

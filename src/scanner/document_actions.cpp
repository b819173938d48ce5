#include "scanner/document_actions.h"

#include "runtime/report.h"
#include "text/temporaries.h"

namespace qvox {

Elements::Elements(Heap& parseHeap, Declarations& declarations, Expansion& expansion,
                   NamespaceOptions namespaceOptions)
    : heap(parseHeap),
      dtd(declarations),
      options(namespaceOptions),
      namespaces(parseHeap),
      attributes(parseHeap, expansion, namespaces, namespaceOptions) {}

void Elements::begin_tag() { tagInHand = new_tag(); }

TagRecord* Elements::new_tag() {
    if (spareTags.empty()) return heap.halloc_record<TagRecord>();
    TagRecord* tag = spareTags.back();
    spareTags.pop_back();
    tag->attributes.shrink(0);
    tag->prefixMappings.shrink(0);
    tag->uri = nullptr;
    tag->localName = nullptr;
    return tag;
}

void Elements::add_attribute(const Unit* qName, Unit* value, bool specified) {
    tagInHand->attributes.append(heap, {nullptr, nullptr, nullptr, qName, value, false, specified});
}

void Elements::process_start_tag(const Unit* qName) {
    TagRecord& tag = *tagInHand;
    tag.qName = qName;
    tagStack.push_back(&tag);
    namespaces.collect_namespace_decls(tag, options.namespaces);
    if (options.namespaces) namespaces.resolve_element(tag);
    ElementRecord* declaration = declaration_of(tag);
    if (declaration != nullptr) attributes.apply_declaration(tag, *declaration);
    attributes.finish(tag);
}

// With namespaces on, an element is matched with the declaration of its local name.
ElementRecord* Elements::declaration_of(const TagRecord& tag) {
    return dtd.find_element_decl(tag.localName != nullptr ? tag.localName : tag.qName);
}

void Elements::end_tag(const Unit* qName) {
    check_end_tag(qName);
    namespaces.leave_namespace_decls(*tagStack.back());
    spareTags.push_back(tagStack.back());
    tagStack.pop_back();
    tagInHand = tagStack.empty() ? nullptr : tagStack.back();
}

void Elements::check_end_tag(const Unit* qName) const {
    if (tagStack.empty()) {
        qvox_report(REPORT_ERROR, QVOXException::UNBALANCED_TAG_ERR, "unbalanced end tag (%s)",
                    OsTemp(qName).get());
    }
    const Unit* open = tagStack.back()->qName;
    if (open != qName && wide_compare(open, qName) != 0) {
        qvox_report(REPORT_ERROR, QVOXException::UNBALANCED_TAG_ERR,
                    "end tag (%s) not match to start tag (%s)", OsTemp(qName).get(),
                    OsTemp(open).get());
    }
}

void Elements::end() const {
    if (tagStack.empty()) return;
    qvox_report(REPORT_FATAL, QVOXException::INTERNAL_ERR, "tag stack abnormal end : sp = %zu",
                tagStack.size());
}

}  // namespace qvox

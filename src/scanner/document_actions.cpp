#include "scanner/document_actions.h"

#include <vector>

#include "runtime/allocation.h"
#include "runtime/report.h"
#include "scanner/attributes.h"
#include "scanner/namespaces.h"
#include "scanner/token.h"
#include "text/temporaries.h"

namespace qvox {

TagRecord* currentTag = nullptr;

namespace {

NamespaceOptions options = {true, false};
Heap* attributeValues = nullptr;    // those of the tag in hand
std::vector<TagRecord*> tagStack;   // the open elements
std::vector<TagRecord*> spareTags;  // closed ones, whose memory the next tags use again

TagRecord* new_tag() {
    if (spareTags.empty()) return halloc_record<TagRecord>(parseHeap);
    TagRecord* tag = spareTags.back();
    spareTags.pop_back();
    tag->attributes.shrink(0);
    tag->prefixMappings.shrink(0);
    tag->uri = nullptr;
    tag->localName = nullptr;
    return tag;
}

// With namespaces on, an element is matched with the declaration of its local name.
ElementRecord* declaration_of(const TagRecord& tag) {
    return find_element_decl(tag.localName != nullptr ? tag.localName : tag.qName);
}

void check_end_tag(const Unit* qName) {
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

}  // namespace

void actions_init(NamespaceOptions parseOptions) {
    options = parseOptions;
    tagStack.clear();
    spareTags.clear();
    currentTag = nullptr;
    attributeValues = heap_create();
    namespaces_start();
    dtd_tables_create();
}

void actions_end(bool accepted) {
    if (accepted && !tagStack.empty()) {
        qvox_report(REPORT_FATAL, QVOXException::INTERNAL_ERR, "tag stack abnormal end : sp = %zu",
                    tagStack.size());
    }
    dtd_tables_destroy();
    namespaces_start();
    if (attributeValues != nullptr) heap_destroy(attributeValues);
    attributeValues = nullptr;
    std::vector<TagRecord*>().swap(tagStack);
    std::vector<TagRecord*>().swap(spareTags);
    currentTag = nullptr;
    if (memstatEnabled) memory_statistics();
}

void begin_tag(int token) {
    if (token != STAG_OPEN) return;
    heap_clear(attributeValues);
    currentTag = new_tag();
}

Unit* copy_for_tag(const Unit* text, std::size_t length) {
    return halloc_copy(attributeValues, text, length);
}

void add_attribute(const Unit* qName, Unit* value, bool specified) {
    currentTag->attributes.append({nullptr, nullptr, nullptr, qName, value, false, specified});
}

void process_start_tag(const Unit* qName) {
    TagRecord& tag = *currentTag;
    tag.qName = qName;
    tagStack.push_back(&tag);
    collect_namespace_decls(tag, options.namespaces);
    if (options.namespaces) resolve_element(tag);
    ElementRecord* declaration = declaration_of(tag);
    if (declaration != nullptr) apply_declaration(tag, *declaration);
    finish_attributes(tag, options);
}

void end_tag(const Unit* qName) {
    check_end_tag(qName);
    leave_namespace_decls(*tagStack.back());
    spareTags.push_back(tagStack.back());
    tagStack.pop_back();
    currentTag = tagStack.empty() ? nullptr : tagStack.back();
}

}  // namespace qvox

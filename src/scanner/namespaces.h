// Namespace declarations and the names they resolve. No prefix has a built-in binding, and an
// undeclared one is no error.
#pragma once

#include "runtime/heap.h"
#include "scanner/names.h"
#include "scanner/tag.h"

namespace qvox {

class Namespaces {
public:
    // Nothing is declared.
    Namespaces(Heap& parseHeap, Names& namesOfParse) : heap(parseHeap), names(namesOfParse) {}
    Namespaces(const Namespaces&) = delete;
    Namespaces& operator=(const Namespaces&) = delete;

    // Marks the namespace declarations among the tag's attributes and, with `namespaces`, puts them
    // in force. The first declaration of a prefix in a tag binds.
    void collect_namespace_decls(TagRecord& tag, bool namespaces);

    // The values of the tag's attributes are normalised now: its declarations get their URIs.
    void take_uris(TagRecord& tag);

    // The tag's element has ended, and its declarations with it.
    void leave_namespace_decls(const TagRecord& tag);

    // The URI of an element or attribute of that name, or null. An attribute without prefix has no
    // namespace.
    const Name* element_uri(Name& qName) const;
    const Name* attribute_uri(Name& qName) const;

private:
    PrefixMapping*& innermost(const PrefixMapping& mapping);
    void put_in_force(PrefixMapping& mapping);

    Heap& heap;
    Names& names;
    // The innermost declaration of the default namespace. Those of a prefix are found by its name,
    // so that a name is resolved by one look, however deep the element lies.
    PrefixMapping* defaultMapping = nullptr;
};

}  // namespace qvox

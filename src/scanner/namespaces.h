// Namespace declarations and the names they resolve. No prefix has a built-in binding, and an
// undeclared one is no error.
#pragma once

#include <map>
#include <string_view>

#include <qvox/xstring.h>

#include "runtime/heap.h"
#include "scanner/tag.h"

namespace qvox {

class Namespaces {
public:
    // Nothing is declared.
    explicit Namespaces(Heap& parseHeap) : heap(parseHeap) {}
    Namespaces(const Namespaces&) = delete;
    Namespaces& operator=(const Namespaces&) = delete;

    // Marks the namespace declarations among the tag's attributes and, with `namespaces`, puts them
    // in force. The first declaration of a prefix in a tag binds.
    void collect_namespace_decls(TagRecord& tag, bool namespaces);

    // The tag's element has ended, and its declarations with it.
    void leave_namespace_decls(const TagRecord& tag);

    // Set the local name and, where a declaration is in force, the URI. An attribute without prefix
    // has no namespace.
    void resolve_element(TagRecord& tag) const;
    void resolve_attribute(AttributeRecord& attribute) const;

private:
    using Prefix = std::basic_string_view<Unit, UnitTraits>;

    void put_in_force(PrefixMapping& mapping);
    void take_out_of_force(const PrefixMapping& mapping);
    const Unit* uri_of(Prefix prefix) const;

    Heap& heap;
    // The innermost declaration of each prefix; the empty prefix stands for the default namespace.
    // A name is resolved by one lookup, however deep the element lies.
    std::map<Prefix, PrefixMapping*> mappingsInForce;
};

}  // namespace qvox

// The attributes of a start tag: their declarations, defaults and normalisation.
#pragma once

#include "input/expansion.h"
#include "runtime/heap.h"
#include "scanner/dtd_actions.h"
#include "scanner/namespaces.h"
#include "scanner/tag.h"

namespace qvox {

class TagAttributes {
public:
    TagAttributes(Heap& parseHeap, Expansion& expansionOfParse, Names& namesOfParse,
                  const Namespaces& inForce, NamespaceOptions namespaceOptions)
        : heap(parseHeap),
          expansion(expansionOfParse),
          names(namesOfParse),
          namespaces(inForce),
          options(namespaceOptions) {}

    // Links the attributes of the tag with their definitions, and appends the defaults of those
    // that don't stand in it.
    void apply_declaration(TagRecord& tag, const ElementRecord& declaration);

    // Normalises the values that stand in the tag; declared defaults are normalised already. One
    // that was lent gets a copy in `values` if it isn't normalised.
    static void normalize(TagRecord& tag, Heap& values);

    // Resolves the names of the attributes, and drops the namespace declarations unless the options
    // keep them.
    void resolve(TagRecord& tag) const;

private:
    void append_default(TagRecord& tag, const AttDefRecord& definition);

    Heap& heap;
    Expansion& expansion;
    Names& names;
    const Namespaces& namespaces;
    NamespaceOptions options;
    unsigned long tagNumber = 0;  // counts the tags that have a declaration
};

}  // namespace qvox

// The open elements: the stack of open tags, and the making of a start tag with its attributes,
// defaults and namespaces.
#pragma once

#include <vector>

#include "runtime/heap.h"
#include "scanner/attributes.h"
#include "scanner/names.h"
#include "scanner/namespaces.h"
#include "scanner/tag.h"

namespace qvox {

class Elements {
public:
    Elements(Heap& parseHeap, Expansion& expansion, Names& namesOfParse,
             NamespaceOptions namespaceOptions);
    Elements(const Elements&) = delete;
    Elements& operator=(const Elements&) = delete;

    // The lexer has met the '<' of a start tag.
    void begin_tag();

    // An attribute of the current tag. The value is taken over.
    void add_attribute(Name& qName, Unit* value);

    // The last attribute has been read: the tag is opened, its names resolved, its attributes
    // completed and normalised.
    void process_start_tag(Name& qName);

    // Closes the innermost tag. A name that isn't the start tag's is an error.
    void end_tag(const Name& qName);

    // The record that the next reduction works on: the start tag being read, else the innermost
    // open element, else null.
    const TagRecord* currentTag() const { return tagInHand; }

    // An accepted document has been read: open tags are an internal error.
    void end() const;

private:
    TagRecord* new_tag();
    void check_end_tag(const Name& qName) const;

    Heap& heap;
    Names& names;
    NamespaceOptions options;
    Namespaces namespaces;
    TagAttributes attributes;

    TagRecord* tagInHand = nullptr;
    std::vector<TagRecord*> tagStack;   // the open elements
    std::vector<TagRecord*> spareTags;  // closed ones, whose memory the next tags use again
};

}  // namespace qvox

// The open elements: the stack of open tags, and the making of a start tag with its attributes,
// defaults and namespaces.
#pragma once

#include <vector>

#include "runtime/heap.h"
#include "scanner/attributes.h"
#include "scanner/dtd_actions.h"
#include "scanner/namespaces.h"
#include "scanner/tag.h"

namespace qvox {

class Elements {
public:
    Elements(Heap& parseHeap, Declarations& declarations, Expansion& expansion,
             NamespaceOptions namespaceOptions);
    Elements(const Elements&) = delete;
    Elements& operator=(const Elements&) = delete;

    // The lexer has met the '<' of a start tag.
    void begin_tag();

    // An attribute of the current tag. The value is taken over.
    void add_attribute(const Unit* qName, Unit* value, bool specified);

    // The last attribute has been read: the tag is opened, its names resolved, its attributes
    // completed and normalised.
    void process_start_tag(const Unit* qName);

    // Closes the innermost tag. A name that isn't the start tag's is an error.
    void end_tag(const Unit* qName);

    // The record that the next reduction works on: the start tag being read, else the innermost
    // open element, else null.
    const TagRecord* currentTag() const { return tagInHand; }

    // An accepted document has been read: open tags are an internal error.
    void end() const;

private:
    TagRecord* new_tag();
    ElementRecord* declaration_of(const TagRecord& tag);
    void check_end_tag(const Unit* qName) const;

    Heap& heap;
    Declarations& dtd;
    NamespaceOptions options;
    Namespaces namespaces;
    TagAttributes attributes;

    TagRecord* tagInHand = nullptr;
    std::vector<TagRecord*> tagStack;   // the open elements
    std::vector<TagRecord*> spareTags;  // closed ones, whose memory the next tags use again
};

}  // namespace qvox

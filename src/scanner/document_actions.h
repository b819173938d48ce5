// The open elements: the stack of open tags, and the making of a start tag with its attributes,
// defaults and namespaces.
#pragma once

#include <vector>

#include "runtime/heap.h"
#include "scanner/attributes.h"
#include "scanner/events.h"
#include "scanner/names.h"
#include "scanner/namespaces.h"
#include "scanner/tag.h"
#include "scanner/token_buffer.h"

namespace qvox {

class Elements {
public:
    Elements(Heap& parseHeap, Events& eventsOfParse, Expansion& expansion, Names& namesOfParse,
             NamespaceOptions namespaceOptions);
    Elements(const Elements&) = delete;
    Elements& operator=(const Elements&) = delete;

    // The '<' of a start tag has been met; and that tag isn't to be read after all.
    void begin_tag();
    void drop_tag();

    // A copy of a value, which lasts until the next start tag begins.
    Unit* keep_value(const TokenBuffer& value) {
        return values.halloc_copy(value.text(), value.length());
    }

    // An attribute of the current tag. The value is taken over.
    void add_attribute(Name& qName, Unit* value, std::size_t length) {
        tagInHand->attributes.append(heap, nullptr, nullptr, nullptr, &qName, value, length, false,
                                     false, true);
    }
    void add_attribute(Name& qName, Unit* value) {
        add_attribute(qName, value, wide_length(value));
    }
    // The same for a value that is there until the next start tag begins, without white space but
    // blanks. The unit behind it belongs to nobody once the tag is read: end_values() ends it
    // there.
    void lend_attribute(Name& qName, Unit* value, std::size_t length) {
        tagInHand->attributes.append(heap, nullptr, nullptr, nullptr, &qName, value, length, true,
                                     false, true);
    }
    void end_values();

    // The last attribute has been read: the tag is opened, its names resolved, its attributes
    // completed and normalised, and its events raised.
    void start_element(Name& qName);

    // Raises the events of the end, under the start tag's name, and closes the innermost tag. A
    // name that isn't the start tag's is an error then.
    void end_element(const Name& qName);

    // How many elements are open.
    std::size_t depth() const { return openTags; }

    // The record that the next reduction works on: the start tag being read, else the innermost
    // open element, else null.
    const TagRecord* currentTag() const { return tagInHand; }

    // An accepted document has been read: open tags are an internal error.
    void end() const;

private:
    TagRecord* innermost() const { return openTags != 0 ? tagStack[openTags - 1] : nullptr; }
    void process_start_tag(Name& qName);
    void end_tag(const Name& qName);
    void check_end_tag(const Name& qName) const;

    Heap& heap;
    Events& events;
    Names& names;
    NamespaceOptions options;
    Namespaces namespaces;
    TagAttributes attributes;

    Heap values;  // of the attributes of the start tag in hand
    TagRecord* tagInHand = nullptr;
    // The open elements, and behind them closed ones, whose memory the next tags use again.
    std::vector<TagRecord*> tagStack;
    std::size_t openTags = 0;
};

}  // namespace qvox

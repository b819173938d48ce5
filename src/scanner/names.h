// The names of a document, and other texts that it repeats: each is kept once a parse, and equal
// ones are the same object, with what is known of it. A document has few names and repeats them in
// every tag; nothing is copied for that.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include <qvox/xstring.h>

#include "runtime/heap.h"
#include "runtime/text_table.h"
#include "text/lanes.h"
#include "text/lent_text.h"
#include "text/wide.h"

namespace qvox {

struct ElementRecord;
struct EntityRecord;
struct PrefixMapping;

// The declarations of a name.
struct Declared {
    ElementRecord* element;
    EntityRecord* entity;
};

// A document may have any number of names, so these are kept small. The text lies behind the name,
// and there are HEAD units at least.
struct Name {
    Name(const LentText& textBehind, std::uint32_t hashOfText, std::uint32_t numberOfName)
        : text(textBehind.string()), hash(hashOfText), number(numberOfName) {}

    const Unit* units() const { return reinterpret_cast<const Unit*>(this + 1); }

    // Whether the units at a place begin with this name. Up to HEAD of them are looked at, and more
    // only where the name is longer and `end` is far enough.
    bool is_at(const Unit* place, const Unit* end) const {
        const auto length = static_cast<std::size_t>(text.length());
        const std::uint64_t same =
            lanes::bits(lanes::equal(lanes::load(place), lanes::load(units())));
        if ((~same & lanes::lowest(std::min(length, HEAD))) != 0) return false;
        return length <= HEAD || (static_cast<std::size_t>(end - place) > length &&
                                  std::memcmp(place, units(), length * sizeof(Unit)) == 0);
    }

    static constexpr std::size_t HEAD = lanes::UNITS;

    Xstring text;  // as events hand it out
    // The parts of a qualified name at its first colon, once Names::split has been asked. A name
    // without colon is its own local part; an empty prefix counts as none, which is null.
    Name* prefix = nullptr;
    Name* localPart = nullptr;
    Declared* declared = nullptr;      // once there is a declaration
    PrefixMapping* mapping = nullptr;  // the innermost declaration of this prefix
    Name* follower = nullptr;          // which came behind this one in tags, the last time
    std::uint32_t hash;
    std::uint32_t number;  // from 0 on, in the order in which names were met
    Name* next = nullptr;  // in its bucket

    ElementRecord* element() const { return declared != nullptr ? declared->element : nullptr; }
    EntityRecord* entity() const { return declared != nullptr ? declared->entity : nullptr; }
};

// The units of a name; null for null.
inline const Unit* units_of(const Name* name) { return name != nullptr ? name->units() : nullptr; }

inline LentText lent_text(const Name* name) {
    return name != nullptr ? LentText{name->units(), name->text.length()} : LentText{nullptr, 0};
}

// Names live as long as the heap. None is ever destroyed: they own nothing.
class Names {
public:
    explicit Names(Heap& parseHeap);
    Names(const Names&) = delete;
    Names& operator=(const Names&) = delete;

    // The name of `length` units at `text`, which are copied if it is new.
    Name& keep(const Unit* text, std::size_t length);

    // The name, if it is kept; else null.
    Name* known(const Unit* text, std::size_t length) const {
        return table.find(text, length, table.hash_of(text, length));
    }

    // Sets the parts of a qualified name. Returns it.
    Name& split(Name& name) {
        if (name.localPart == nullptr) find_parts(name);
        return name;
    }

    // The name "xmlns".
    Name& xmlns() { return *xmlnsName; }

private:
    void find_parts(Name& name);
    Name& enter(const Unit* text, std::size_t length, std::uint32_t hash);

    Heap& heap;
    TextTable<Name> table;
    Name* xmlnsName;
};

}  // namespace qvox

// Start tags, as the straight way reads them.
#include "scanner/content.h"
#include "scanner/places.h"
#include "text/char_classes.h"
#include "text/lanes.h"

namespace qvox {

namespace {

// The first unit of a value that ends it, or that it can't simply be lent with: its quote, '&', and
// controls, among them the zeros behind the window.
Unit* plain_value_end(Unit* place, Unit quote) {
    for (;; place += lanes::UNITS) {
        const lanes::Units8 units = lanes::load(place);
        const std::uint64_t found = lanes::bits(
            lanes::either(lanes::either(lanes::equal(units, quote), lanes::equal(units, '&')),
                          lanes::up_to(units, 0x1F)));
        if (found != 0) return place + lanes::first_lane(found);
    }
}

}  // namespace

Content::Outcome Content::read_start_tag(Unit* piece) {
    Unit* const name = piece + 1;
    if (!is_name_start(*name)) return unrecognised(name);
    Unit* nameEnd = nullptr;
    Name& qName = name_at(name, &nameEnd);
    elements.begin_tag();
    begin_references();
    Unit* failed = nullptr;
    Unit* const close = read_attributes(nameEnd, &failed);
    if (close != nullptr) return open_tag(qName, close);
    elements.drop_tag();
    return unrecognised(failed);
}

// The name at a place where one begins, and the place behind it. Documents repeat the sequence of
// their names, so the one that is likely here is looked for first.
Name& Content::name_at(Unit* place, Unit** behind) {
    Name* name = lastName->follower;
    if (name == nullptr || !name->is_at(place, input.windowEnd()) ||
        is_name_char(place[name->text.length()])) {
        *behind = behind_name(place);
        name = &names.keep(place, static_cast<std::size_t>(*behind - place));
        lastName->follower = name;
    } else {
        *behind = place + name->text.length();
    }
    lastName = name;
    return *name;
}

// The attributes behind a name, up to the '>' or the "/>" of the tag, which is returned; null, with
// the place where that became clear, for what isn't a whole tag.
Unit* Content::read_attributes(Unit* place, Unit** failed) {
    for (;;) {
        Unit* const next = behind_space(place);
        if (*next == '>' || *next == '/') {
            Unit* const close = *next == '/' ? next + 1 : next;
            *failed = *close == '>' ? close + 1 : close;
            return *close == '>' && close + 1 != input.windowEnd() ? next : nullptr;
        }
        *failed = next;
        if (next == place || !is_name_start(*next)) return nullptr;
        place = read_attribute(next, failed);
        if (place == nullptr) return nullptr;
    }
}

Unit* Content::read_attribute(Unit* place, Unit** failed) {
    Unit* nameEnd = nullptr;
    Name& name = name_at(place, &nameEnd);
    Unit* const equals = behind_space(nameEnd);
    *failed = equals;
    if (*equals != '=') return nullptr;
    Unit* const opening = behind_space(equals + 1);
    *failed = opening;
    if (!is_quote(*opening)) return nullptr;
    Unit* const value = opening + 1;
    Unit* const valueEnd = plain_value_end(value, *opening);
    if (*valueEnd != *opening) return read_changed_value(name, value, *opening, failed);
    elements.lend_attribute(name, value, static_cast<std::size_t>(valueEnd - value));
    return valueEnd + 1;
}

// A value with references, or with white space to be normalised: it is put together elsewhere.
Unit* Content::read_changed_value(Name& name, Unit* value, Unit quote, Unit** failed) {
    gathered.clear();
    Unit* start = value;
    for (;;) {
        Unit* const stop = plain_value_end(start, quote);
        append(start, stop);
        *failed = stop;
        if (stop == input.windowEnd()) return nullptr;
        start = stop + 1;
        if (*stop == quote) break;
        if (*stop != '&') {
            gathered.append_unit(*stop);
            continue;
        }
        start = read_reference(stop, value, quote, failed);
        if (start == nullptr) return nullptr;
    }
    elements.add_attribute(name, elements.keep_value(gathered), gathered.length());
    return start;
}

Content::Outcome Content::open_tag(Name& name, Unit* close) {
    if (!references.empty()) tell_references(nullptr);
    const bool isEmpty = *close == '/';
    elements.end_values();
    take(close + 1, isEmpty ? close + 2 : close + 1);
    elements.start_element(name);
    if (isEmpty) {
        elements.end_element(name);
    } else {
        ++unknownElements;
    }
    return TAKEN;
}

}  // namespace qvox

// Text between markup, and references in it and in values, as the straight way reads them.
#include "scanner/char_reference.h"
#include "scanner/content.h"
#include "scanner/places.h"
#include "text/char_classes.h"
#include "text/lanes.h"

namespace qvox {

namespace {

// Whether "]]>" is in the text.
bool has_section_end(const Unit* text, const Unit* end) {
    if (lanes::find_any_within<'>'>(text, end) == end) return false;
    for (const Unit* place = text; end - place > 2; ++place) {
        if (place[0] == ']' && place[1] == ']' && place[2] == '>') return true;
    }
    return false;
}

}  // namespace

// Text up to the next markup, lent where it stands.
Content::Outcome Content::read_text(Unit* piece) {
    const Unit* const end = input.windowEnd();
    for (Unit* place = piece + searched;; ++place) {
        place = lanes::find_any<'<', '&', '>'>(place, end);
        if (place == end) {
            searched = static_cast<std::size_t>(end - piece);
            return INCOMPLETE;
        }
        if (*place == '&') return read_text_with_references(piece, place);
        if (*place == '<') {
            input.set_token(piece + 1);
            return tell_text(place, text_between(piece, place));
        }
        if (place - piece >= 2 && place[-1] == ']' && place[-2] == ']') return UNUSUAL;
    }
}

Content::Outcome Content::read_text_with_references(Unit* piece, Unit* reference) {
    gathered.clear();
    begin_references();
    append(piece, reference);
    Unit* failed = nullptr;
    Unit* place = reference;
    while (*place != '<') {
        Unit* const start = read_reference(place, piece + 1, 0, &failed);
        if (start == nullptr) return unrecognised(failed);
        place = lanes::find_any<'<', '&'>(start, input.windowEnd());
        if (place == input.windowEnd()) return INCOMPLETE;
        append(start, place);
    }
    const Unit* const text = gathered.terminate();
    // References that stand for nothing are no text.
    if (gathered.length() == 0 || has_section_end(text, text + gathered.length())) return UNUSUAL;
    input.set_token(piece + 1);
    tell_references(piece + 1);
    return tell_text(place, {text, gathered.length(), true});
}

// The text of a piece that ends in front of the '<' at `close`.
Content::Outcome Content::tell_text(Unit* close, const EventText& text) {
    input.take_up_to(close + 1);
    *close = 0;
    events.ev_characters(text);
    *close = '<';
    return TAKEN;
}

void Content::append(const Unit* from, const Unit* to) {
    gathered.append_all(from, static_cast<std::size_t>(to - from));
}

void Content::begin_references() {
    references.clear();
    expandedUnits = 0;
}

// Appends what the reference at '&' stands for and returns the place behind it; null, with the
// place where that became clear, for one that has to be left to the lexer. In a literal `quote`
// would end it.
Unit* Content::read_reference(Unit* reference, const Unit* token, Unit quote, Unit** failed) {
    return reference[1] == '#' ? read_character_reference(reference + 2, failed)
                               : read_entity_reference(reference + 1, token, quote, failed);
}

Unit* Content::read_character_reference(Unit* digits, Unit** failed) {
    CharReference number;
    while (number.take(*digits)) ++digits;
    *failed = digits;
    if (*digits != ';' || !number.is_character()) return nullptr;
    gathered.append_char(number.value());
    return digits + 1;
}

Unit* Content::read_entity_reference(Unit* name, const Unit* token, Unit quote, Unit** failed) {
    Unit* const end = is_name_start(*name) ? behind_name(name) : name;
    *failed = end;
    if (end == name || *end != ';') return nullptr;
    const PlainEntity* entity =
        entities.find(names.keep(name, static_cast<std::size_t>(end - name)));
    if (entity == nullptr || (quote != 0 && entity->hasQuotes)) return nullptr;
    expandedUnits += entity->units;
    if (!input.expansion.has_room(expandedUnits)) return nullptr;
    gathered.append_all(entity->text, entity->length);
    references.push_back({token, end + 1, entity});
    return end + 1;
}

// The scanner meets references ahead of the text that they stand in. `token` is the one that has
// begun already.
void Content::tell_references(const Unit* token) {
    for (const Reference& reference : references) {
        if (reference.token != token) input.set_token(reference.token);
        token = reference.token;
        input.take_up_to(reference.behind);
        events.ev_start_entity(reference.entity->name);
        input.expansion.count(reference.entity->units);
        events.ev_end_entity(reference.entity->name);
    }
}

}  // namespace qvox

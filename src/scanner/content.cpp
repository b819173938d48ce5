#include "scanner/content.h"

#include <cstring>

#include "scanner/places.h"
#include "text/char_classes.h"
#include "text/lanes.h"

namespace qvox {

namespace {

// The grammar's stack has room for elements that are a little deeper. Where that room ends is the
// grammar's to say.
constexpr std::size_t DEEPEST_ELEMENT = 4000;

constexpr Unit CDATA_OPENING[] = {'<', '!', '[', 'C', 'D', 'A', 'T', 'A', '['};
constexpr std::size_t CDATA_OPENING_LENGTH = sizeof CDATA_OPENING / sizeof CDATA_OPENING[0];

// The place in front of which two units stand, in a row, with a third in it: the first from `next`
// on, or `end`.
template <Unit third>
Unit* find_behind(Unit* next, const Unit* end, Unit first, Unit second) {
    for (Unit* place = next;; ++place) {
        place = lanes::find_any<third>(place, end);
        if (place == end || (place - next >= 2 && place[-2] == first && place[-1] == second)) {
            return place;
        }
    }
}

}  // namespace

Content::Content(Heap& heap, Input& inputOfParse, Names& namesOfParse, Elements& elementsOfParse,
                 Lexer& lexerOfParse, Events& eventsOfParse, bool byPieces)
    : input(inputOfParse),
      names(namesOfParse),
      elements(elementsOfParse),
      lexer(lexerOfParse),
      events(eventsOfParse),
      entities(heap),
      isOn(byPieces),
      lastName(&names.xmlns()) {}

int Content::read() {
    if (hasDeclined || !is_in_reach()) return hand_over();
    Outcome outcome = TAKEN;
    while (outcome == TAKEN && elements.depth() < DEEPEST_ELEMENT) {
        searched = 0;
        outcome = read_piece();
        while (outcome == INCOMPLETE && input.extend_window()) outcome = read_piece();
    }
    return outcome == CLOSED ? ELEMENT_CLOSED : hand_over();
}

// A piece that was taken leaves this as it is.
bool Content::is_in_reach() const {
    return isOn && lexer.is_in_content() && input.windowChar() != nullptr;
}

// The lexer has the next token, once it and the grammar know of all open elements.
int Content::hand_over() {
    hasDeclined = unknownElements != 0;
    if (!hasDeclined) return NOTHING;
    --unknownElements;
    lexer.enter_element();
    return ELEMENT_OPENED;
}

Content::Outcome Content::read_piece() {
    Unit* const piece = input.windowStart();
    if (*piece != '<') return read_text(piece);
    switch (piece[1]) {
        case '/': return read_end_tag(piece);
        case '!': return read_markup(piece);
        case '?': return read_pi(piece);
        default: return read_start_tag(piece);
    }
}

Content::Outcome Content::unrecognised(const Unit* place) const {
    return place == input.windowEnd() ? INCOMPLETE : UNUSUAL;
}

// A text of the window. In a file's, line ends are normalised already.
EventText Content::text_between(const Unit* text, const Unit* end) const {
    return {text, static_cast<std::size_t>(end - text), input.reading_memory()};
}

// The piece up to `behindPiece` is read, with the unit there in hand; the events that follow are
// those of the token that began in front of `token`.
void Content::take(const Unit* token, Unit* behindPiece) {
    input.set_token(token);
    input.take_up_to(behindPiece + 1);
}

Content::Outcome Content::read_end_tag(Unit* piece) {
    const Name& name = *elements.currentTag()->qName;
    const auto length = static_cast<std::size_t>(name.text.length());
    Unit* close = piece + 2;
    if (static_cast<std::size_t>(input.windowEnd() - close) < length) return INCOMPLETE;
    if (!name.is_at(close, input.windowEnd())) return UNUSUAL;
    close = behind_space(close + length);
    if (*close != '>') return unrecognised(close);
    if (close + 1 == input.windowEnd()) return INCOMPLETE;
    take(close + 1, close + 1);
    elements.end_element(name);
    if (unknownElements != 0) {
        --unknownElements;
        return TAKEN;
    }
    lexer.leave_element();
    return CLOSED;
}

Content::Outcome Content::read_markup(Unit* piece) {
    if (piece[2] == '-' && piece[3] == '-') return read_comment(piece);
    const auto ready = static_cast<std::size_t>(input.windowEnd() - piece);
    if (ready < CDATA_OPENING_LENGTH) return INCOMPLETE;
    return std::memcmp(piece, CDATA_OPENING, sizeof CDATA_OPENING) == 0 ? read_cdata(piece)
                                                                        : UNUSUAL;
}

// The first two hyphens end the text, and have to end the comment.
Content::Outcome Content::read_comment(Unit* piece) {
    Unit* const text = piece + 4;
    Unit* hyphens = text;
    for (;; ++hyphens) {
        hyphens = lanes::find_any<'-'>(hyphens, input.windowEnd());
        if (hyphens == input.windowEnd()) return INCOMPLETE;
        if (hyphens[1] == '-') break;
    }
    Unit* const close = hyphens + 2;
    if (*close != '>') return unrecognised(close);
    if (close + 1 == input.windowEnd()) return INCOMPLETE;
    take(text + 1, close + 1);
    *hyphens = 0;
    events.ev_comment(text_between(text, hyphens));
    return TAKEN;
}

Content::Outcome Content::read_cdata(Unit* piece) {
    Unit* const text = piece + CDATA_OPENING_LENGTH;
    Unit* const close = find_behind<'>'>(text, input.windowEnd(), ']', ']');
    if (close == input.windowEnd() || close + 1 == input.windowEnd()) return INCOMPLETE;
    take(piece + 1, text);
    events.ev_start_cdata();
    take(text + 1, close + 1);
    close[-2] = 0;
    events.ev_characters(text_between(text, close - 2));
    events.ev_end_cdata();
    return TAKEN;
}

// A target that begins with an x may be one that isn't allowed, or a declaration.
Content::Outcome Content::read_pi(Unit* piece) {
    Unit* const target = piece + 2;
    if (!is_name_start(*target) || *target == 'x' || *target == 'X') return unrecognised(target);
    Unit* const targetEnd = behind_name(target);
    Unit* const data = behind_space(targetEnd);
    const bool hasData = data != targetEnd;
    if (!hasData && (data[0] != '?' || data[1] != '>')) {
        return unrecognised(data[0] == '?' ? data + 1 : data);
    }
    Unit* close = data + 1;
    for (;; ++close) {
        close = lanes::find_any<'>'>(close, input.windowEnd());
        if (close >= input.windowEnd() || close + 1 == input.windowEnd()) return INCOMPLETE;
        if (close[-1] == '?') break;
    }
    const Name& name = names.keep(target, static_cast<std::size_t>(targetEnd - target));
    const EventText nameText(name.units(), static_cast<std::size_t>(name.text.length()), false);
    take(data + 1, close + 1);
    close[-1] = 0;
    events.ev_pi(nameText, hasData ? text_between(data, close - 1) : EventText(nullptr));
    return TAKEN;
}

}  // namespace qvox

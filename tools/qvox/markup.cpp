#include "markup.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

struct Form {
    std::string_view start;
    std::string_view end;
    Piece::Kind kind;
};

// The first that fits is the form of a piece; a text has none.
constexpr Form FORMS[] = {
    {"<!--", "-->", Piece::OTHER},   {"<![CDATA[", "]]>", Piece::OTHER},
    {"<?", "?>", Piece::OTHER},      {"<!DOCTYPE ", "[", Piece::DOCTYPE_START},
    {"<!", ">", Piece::DECLARATION}, {"]>", ">", Piece::DOCTYPE_END},
    {"</", ">", Piece::END_TAG},     {"<", ">", Piece::START_TAG},
};

constexpr std::string_view ATTLIST_START = "<!ATTLIST ";

bool is_at(UnitView text, std::size_t place, std::string_view ascii) {
    return text.size() - place >= ascii.size() &&
           std::equal(ascii.begin(), ascii.end(),
                      text.begin() + static_cast<std::ptrdiff_t>(place));
}

const Form* form_of(UnitView text) {
    const auto* const form =
        std::find_if(std::begin(FORMS), std::end(FORMS),
                     [text](const Form& candidate) { return is_at(text, 0, candidate.start); });
    return form == std::end(FORMS) ? nullptr : form;
}

bool has_quotes(Piece::Kind kind) {
    return kind == Piece::START_TAG || kind == Piece::DOCTYPE_START || kind == Piece::DECLARATION;
}

// The length of the literal in a text that begins with it and its closing quote.
std::size_t length_in(UnitView text, UnitView literal) {
    std::size_t i = 0;
    for (const unsigned short unit : literal) {
        if (i == text.size()) return UnitView::npos;
        const bool isReturn = unit == '\n' && text[i] == '\r';
        if (!isReturn && text[i] != unit) return UnitView::npos;
        i += isReturn && is_at(text, i, "\r\n") ? 2U : 1U;
    }
    return is_at(text, i, "\"") ? i : UnitView::npos;
}

// What stands in the quotes behind this beginning of a piece. In front of the value of an entity
// there are its name and perhaps a "%" only.
Part::Kind kind_of_literal(Piece::Kind piece, UnitView start) {
    if (piece == Piece::START_TAG) return Part::ATTRIBUTE_VALUE;
    if (is_at(start, 0, ATTLIST_START)) return Part::DEFAULT_VALUE;
    if (!is_at(start, 0, "<!ENTITY ")) return Part::IDENTIFIER;
    const auto blanks = std::count(start.begin(), start.end(), ' ');
    return blanks == (is_at(start, 0, "<!ENTITY % ") ? 3 : 2) ? Part::ENTITY_VALUE
                                                              : Part::IDENTIFIER;
}

}  // namespace

bool MarkupCutter::next(Piece& piece) {
    if (rest.empty()) return false;
    piece.parts.clear();
    if (const Form* const form = form_of(rest)) {
        piece.kind = form->kind;
        const std::size_t start = piece.kind == Piece::DOCTYPE_END ? 0 : form->start.size();
        piece.text = rest.substr(0, cut(piece, start, form->end));
    } else {
        piece.kind = Piece::TEXT;
        piece.text = rest.substr(0, rest.find('<', 1));
    }
    rest.remove_prefix(piece.text.size());
    if (piece.kind == Piece::START_TAG && piece.text.size() > 1 &&
        piece.text[piece.text.size() - 2] == '/') {
        piece.kind = Piece::EMPTY_TAG;
    }
    if (is_at(piece.text, 0, ATTLIST_START)) leaveOutRepeated(piece);
    return true;
}

// Cuts the parts of the piece in front. Returns its length.
std::size_t MarkupCutter::cut(Piece& piece, std::size_t start, std::string_view end) {
    const bool isQuoteMinded = has_quotes(piece.kind);
    std::size_t partStart = 0;
    std::size_t i = start;
    for (; i < rest.size() && !is_at(rest, i, end); ++i) {
        if (!isQuoteMinded || rest[i] != '"') continue;
        piece.parts.push_back({Part::MARKUP, rest.substr(partStart, i - partStart)});
        const std::size_t length = lengthOfLiteral(piece.kind, rest.substr(i + 1));
        const Part::Kind kind = kind_of_literal(piece.kind, rest.substr(0, i));
        piece.parts.push_back({kind, rest.substr(i + 1, length)});
        i = std::min(i + 1 + length, rest.size() - 1);
        partStart = i + 1;
    }
    i = std::min(i + end.size(), rest.size());
    piece.parts.push_back({Part::MARKUP, rest.substr(partStart, i - partStart)});
    return i;
}

// Of the literal that the text begins with, up to its closing quote.
std::size_t MarkupCutter::lengthOfLiteral(Piece::Kind kind, UnitView text) {
    const std::size_t upToQuote = std::min(text.find('"'), text.size());
    if (kind == Piece::START_TAG) return upToQuote;
    while (nextLiteral < literals.size()) {
        const Units& literal = literals[nextLiteral];
        const std::size_t length = length_in(text, literal);
        if (length == UnitView::npos && !literal.empty()) break;
        ++nextLiteral;
        if (length != UnitView::npos) return length;
    }
    return upToQuote;
}

void MarkupCutter::leaveOutRepeated(Piece& piece) {
    const UnitView text = piece.text.substr(0, piece.text.size() - 1);
    const std::size_t nameEnd = std::min(text.find(' ', ATTLIST_START.size()), text.size());
    const UnitView name = text.substr(ATTLIST_START.size(), nameEnd - ATTLIST_START.size());
    UnitView& earlier = definitions[name];
    const UnitView all = text.substr(nameEnd);
    if (all.substr(0, earlier.size()) == earlier) {
        leave_out(piece, {nameEnd, nameEnd + earlier.size()});
    }
    earlier = all;
}

Place place_of(const Part& part, const Piece& piece) {
    const auto start = static_cast<std::size_t>(part.text.data() - piece.text.data());
    return {start, start + part.text.size()};
}

void leave_out(Piece& piece, const Place& units) {
    if (units.start >= units.end) return;
    std::vector<Part> kept;
    for (const Part& part : piece.parts) {
        const auto [start, end] = place_of(part, piece);
        if (end <= units.start || start >= units.end) {
            kept.push_back(part);
            continue;
        }
        if (start < units.start) {
            kept.push_back({part.kind, part.text.substr(0, units.start - start)});
        }
        if (end > units.end) kept.push_back({part.kind, part.text.substr(units.end - start)});
    }
    piece.parts.swap(kept);
}

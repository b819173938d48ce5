#include "markup.h"

#include <algorithm>
#include <iterator>

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
    return kind == Piece::START_TAG || kind == Piece::EMPTY_TAG || kind == Piece::DOCTYPE_START ||
           kind == Piece::DECLARATION;
}

// The place behind the end of the piece in front. An end in quotes is none.
std::size_t length_of(UnitView text, const Form& form) {
    const bool minded = has_quotes(form.kind);
    bool inQuotes = false;
    for (std::size_t i = form.kind == Piece::DOCTYPE_END ? 0 : form.start.size(); i < text.size();
         ++i) {
        if (minded && text[i] == '"') inQuotes = !inQuotes;
        if (!inQuotes && is_at(text, i, form.end)) return i + form.end.size();
    }
    return text.size();
}

// Whether a literal in a declaration is a value, and not an identifier. In front of the value of an
// entity there are its name and perhaps a "%" only.
bool is_value(UnitView declarationUpToQuote) {
    if (is_at(declarationUpToQuote, 0, "<!ATTLIST ")) return true;
    if (!is_at(declarationUpToQuote, 0, "<!ENTITY ")) return false;
    const std::size_t blanks = static_cast<std::size_t>(
        std::count(declarationUpToQuote.begin(), declarationUpToQuote.end(), ' '));
    return blanks == (is_at(declarationUpToQuote, 0, "<!ENTITY % ") ? 3 : 2);
}

}  // namespace

bool MarkupCutter::next(Piece& piece) {
    if (rest.empty()) return false;
    if (const Form* const form = form_of(rest)) {
        piece = {form->kind, rest.substr(0, length_of(rest, *form))};
    } else {
        piece = {Piece::TEXT, rest.substr(0, rest.find('<', 1))};
    }
    rest.remove_prefix(piece.text.size());
    const bool isEmptyTag = piece.kind == Piece::START_TAG && piece.text.size() > 1 &&
                            piece.text[piece.text.size() - 2] == '/';
    if (isEmptyTag) piece.kind = Piece::EMPTY_TAG;
    return true;
}

void for_each_part(const Piece& piece, const std::function<void(UnitView, bool)>& action) {
    if (!has_quotes(piece.kind) || piece.kind == Piece::DOCTYPE_START) {
        action(piece.text, piece.kind == Piece::TEXT);
        return;
    }
    std::size_t start = 0;
    bool inQuotes = false;
    bool isValue = false;
    for (std::size_t quote = piece.text.find('"'); quote != UnitView::npos;
         quote = piece.text.find('"', quote + 1)) {
        const std::size_t end = inQuotes ? quote : quote + 1;
        action(piece.text.substr(start, end - start), inQuotes && isValue);
        start = end;
        inQuotes = !inQuotes;
        isValue = piece.kind != Piece::DECLARATION || is_value(piece.text.substr(0, quote));
    }
    action(piece.text.substr(start), false);
}

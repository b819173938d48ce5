#include "result_text.h"

#include <cstdio>
#include <string>

#include "characters.h"

namespace {

// What would be read as something else if it stood there as itself, by the kinds of parts. In texts
// and attribute values the library has escaped markup.
constexpr std::string_view REFERENCED[] = {
    "",        // markup
    "\r",      // text
    "\t\n\r",  // the value of an attribute
    "\"&%\r",  // of an entity
    "\"&<\r",  // a default
    "",        // an identifier
};

bool is_referenced(char32_t character, Part::Kind kind) {
    return character < 0x80 &&
           REFERENCED[kind].find(static_cast<char>(character)) != std::string_view::npos;
}

bool can_have_references(Part::Kind kind) { return !REFERENCED[kind].empty(); }

// Leaves out the attributes of a tag behind those that it specifies. Each of these is two parts,
// the value and what stands in front of it.
void leave_out_defaults(Piece& tag, std::size_t specified) {
    const std::size_t nameEnd = tag.text.find(' ');
    if (nameEnd == UnitView::npos || tag.parts.size() <= 2 * specified) return;
    const std::size_t from =
        specified == 0 ? nameEnd : place_of(tag.parts[2 * specified - 1], tag).end + 1;
    leave_out(tag, {from, tag.text.size() - (tag.kind == Piece::EMPTY_TAG ? 2 : 1)});
}

}  // namespace

void ResultText::declare(const std::optional<XmlDeclaration>& declaration) {
    if (!declaration && !encoding.mustBeDeclared) return;
    addAscii("<?xml version=\"" + (declaration ? declaration->version : "1.0"));
    addAscii(std::string("\" encoding=\"") + encoding.name);
    if (declaration && !declaration->standalone.empty()) {
        addAscii("\" standalone=\"" + declaration->standalone);
    }
    addAscii("\"?>");
    endLine();
    bodyStart = result.size();
}

void ResultText::add(UnitView document, const Literals& literals,
                     const SpecifiedAttributes& specified) {
    MarkupCutter cutter(document, literals);
    std::size_t elements = 0;
    Piece piece;
    while (cutter.next(piece)) {
        const bool isTag = piece.kind == Piece::START_TAG || piece.kind == Piece::EMPTY_TAG;
        if (isTag && elements < specified.size()) {
            leave_out_defaults(piece, specified[elements++]);
        }
        addPiece(piece);
    }
    endLine();
}

void ResultText::addPiece(const Piece& piece) {
    if (piece.kind == Piece::END_TAG) --openElements;
    if (piece.kind == Piece::DOCTYPE_END) isInDoctype = false;
    if (piece.kind != Piece::TEXT) breakLine(piece.kind);
    for (const Part& part : piece.parts) {
        part.kind == Part::MARKUP || part.kind == Part::TEXT ? addPart(part) : addLiteral(part);
    }
    if (piece.kind == Piece::START_TAG) ++openElements;
    if (piece.kind == Piece::DOCTYPE_START) isInDoctype = true;
    isBehindText = piece.kind == Piece::TEXT;
}

// Ahead of a piece of markup.
void ResultText::breakLine(Piece::Kind kind) {
    if (result.size() == bodyStart) return;
    if (!style.isIndented) {
        if (openElements == 0 && kind != Piece::END_TAG) endLine();
        return;
    }
    if (isBehindText) return;
    endLine();
    const int depth = openElements + (isInDoctype ? 1 : 0);
    for (int i = 0; i < depth; ++i) addAscii("  ");
}

// Where no reference can stand the other quotes keep a double quote.
void ResultText::addLiteral(const Part& part) {
    const bool hasQuote = !can_have_references(part.kind) && part.text.find('"') != UnitView::npos;
    const std::string_view quote = hasQuote ? "'" : "\"";
    addAscii(quote);
    addPart(part);
    addAscii(quote);
}

void ResultText::addPart(const Part& part) {
    const bool usesReferences = encoding.usesReferences && can_have_references(part.kind);
    const unsigned short* unit = part.text.data();
    const unsigned short* const end = unit + part.text.size();
    while (unit != end) {
        const unsigned short* const start = unit;
        const char32_t character = next_character(unit, end);
        const bool isTaken = takes(character);
        const bool canBeReference = usesReferences && !is_surrogate(character);
        if (is_referenced(character, part.kind) || (canBeReference && !isTaken)) {
            addReference(character);
        } else if (isTaken || style.keepsMisfits) {
            if (character == '\n') ++line;
            result.append(start, unit);
        } else {
            found[character].push_back(line);
            addAscii("?");
        }
    }
}

void ResultText::addReference(char32_t character) {
    char reference[16];
    std::snprintf(reference, sizeof reference, "&#x%X;", static_cast<unsigned>(character));
    addAscii(reference);
}

void ResultText::addAscii(std::string_view ascii) { result.append(ascii.begin(), ascii.end()); }

void ResultText::endLine() {
    result += '\n';
    ++line;
}

bool ResultText::takes(char32_t character) {
    if (character >= known.size()) return encoding.takes(character);
    Knowledge& knowledge = known[character];
    if (knowledge == UNKNOWN) knowledge = encoding.takes(character) ? TAKEN : REFUSED;
    return knowledge == TAKEN;
}

#include "result_text.h"

#include <cstdio>
#include <string>

#include "characters.h"

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

void ResultText::add(UnitView document) {
    MarkupCutter cutter(document);
    Piece piece;
    while (cutter.next(piece)) addPiece(piece);
    endLine();
}

void ResultText::addPiece(const Piece& piece) {
    if (piece.kind == Piece::END_TAG) --openElements;
    if (piece.kind == Piece::DOCTYPE_END) isInDoctype = false;
    if (piece.kind != Piece::TEXT) breakLine(piece.kind);
    for_each_part(piece, [this](UnitView part, bool isValue) { addPart(part, isValue); });
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

void ResultText::addPart(UnitView part, bool isValue) {
    const unsigned short* unit = part.data();
    const unsigned short* const end = unit + part.size();
    while (unit != end) {
        const unsigned short* const start = unit;
        const char32_t character = next_character(unit, end);
        if (character == '\n') ++line;
        const bool canBeReference = isValue && encoding.usesReferences && !is_surrogate(character);
        if (takes(character) || (style.keepsMisfits && !canBeReference)) {
            result.append(start, unit);
        } else if (canBeReference) {
            addReference(character);
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
    if (character < 0x80) return true;
    if (character >= known.size()) return encoding.takes(character);
    Knowledge& knowledge = known[character];
    if (knowledge == UNKNOWN) knowledge = encoding.takes(character) ? TAKEN : REFUSED;
    return knowledge == TAKEN;
}

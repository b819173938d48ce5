#include "document_writer.h"

#include <algorithm>
#include <cstdio>

#include "characters.h"

namespace {

// What would be read as something else if it stood there as itself, by the kinds of parts.
constexpr std::string_view REFERENCED[] = {
    "",             // markup
    "<>&\r",        // text
    "<>&\"\t\n\r",  // the value of an attribute
    "\"&%\r",       // of an entity
    "\"&<\r",       // a default
    "",             // an identifier
};

constexpr std::uint8_t KNOWN = 0x80;  // beside the bits of the kinds

struct NamedReference {
    char32_t character;
    std::string_view name;
};

constexpr NamedReference NAMED_REFERENCES[] = {
    {'<', "&lt;"}, {'>', "&gt;"}, {'&', "&amp;"}, {'"', "&quot;"}};

bool is_referenced(char32_t character, Part::Kind kind) {
    return character < 0x80 &&
           REFERENCED[kind].find(static_cast<char>(character)) != std::string_view::npos;
}

bool can_have_references(Part::Kind kind) { return !REFERENCED[kind].empty(); }

std::string reference_to(char32_t character, Part::Kind kind) {
    if (kind == Part::TEXT || kind == Part::ATTRIBUTE_VALUE) {
        for (const NamedReference& named : NAMED_REFERENCES) {
            if (named.character == character) return std::string(named.name);
        }
    }
    char reference[16];
    std::snprintf(reference, sizeof reference, "&#x%X;", static_cast<unsigned>(character));
    return reference;
}

constexpr std::size_t FLUSHED_SIZE = 32768;  // units

}  // namespace

DocumentWriter::DocumentWriter(const TargetEncoding& target, const WritingStyle& writingStyle,
                               Output& destination)
    : encoding(target),
      style(writingStyle),
      output(destination),
      taken(target),
      plain(0x10000, 0) {}

void DocumentWriter::finish() {
    begin();
    closeStartTag();
    addAscii("\n");
    flush();
}

void DocumentWriter::begin() {
    if (hasBegun) return;
    hasBegun = true;
    output.write(encoding.mark);
    if (encoding.mustBeDeclared) xmlDeclaration({"1.0", {}});
}

void DocumentWriter::xmlDeclaration(const XmlDeclaration& declaration) {
    if (!hasBegun) output.write(encoding.mark);
    hasBegun = true;
    addAscii("<?xml version=\"" + declaration.version + "\" encoding=\"" + encoding.name);
    if (!declaration.standalone.empty()) {
        addAscii("\" standalone=\"" + declaration.standalone);
    }
    addAscii("\"?>\n");
}

void DocumentWriter::documentType(UnitView text, const Literals& literals) {
    MarkupCutter cutter(text, literals);
    for (Piece piece; cutter.next(piece);) addPiece(piece);
}

// A line for each declaration.
void DocumentWriter::addPiece(const Piece& piece) {
    if (piece.kind == Piece::TEXT) return;
    if (piece.kind == Piece::DOCTYPE_END) isInDocumentType = false;
    beginMarkup();
    for (const Part& part : piece.parts) {
        part.kind == Part::MARKUP ? add(part.text, part.kind) : addLiteral(part);
    }
    if (piece.kind == Piece::DOCTYPE_START) isInDocumentType = true;
}

// Where no reference can stand the other quotes keep a double quote.
void DocumentWriter::addLiteral(const Part& part) {
    const bool hasQuote = !can_have_references(part.kind) && part.text.find('"') != UnitView::npos;
    const std::string_view quote = hasQuote ? "'" : "\"";
    addAscii(quote);
    add(part.text, part.kind);
    addAscii(quote);
}

void DocumentWriter::startElement(UnitView name, const std::vector<Attribute>& attributes) {
    beginMarkup();
    addAscii("<");
    add(name, Part::MARKUP);
    for (const Attribute& attribute : attributes) {
        if (attribute.isDefaulted) continue;
        addAscii(" ");
        add(attribute.name, Part::MARKUP);
        addAscii("=\"");
        add(attribute.value, Part::ATTRIBUTE_VALUE);
        addAscii("\"");
    }
    isInStartTag = true;
    ++openElements;
}

void DocumentWriter::endElement(UnitView name) {
    --openElements;
    if (isInStartTag) {
        isInStartTag = false;
        addAscii("/>");
    } else {
        beginMarkup(BEFORE_END_TAG);
        addAscii("</");
        add(name, Part::MARKUP);
        addAscii(">");
    }
    isBehindText = false;
}

void DocumentWriter::text(UnitView text) {
    if (text.empty()) return;
    closeStartTag();
    if (isInCdata) return add(text, Part::MARKUP);
    add(text, Part::TEXT);
    isBehindText = true;
}

void DocumentWriter::startCdata() {
    beginMarkup();
    isInCdata = true;
    addAscii("<![CDATA[");
}

void DocumentWriter::endCdata() {
    isInCdata = false;
    addAscii("]]>");
}

void DocumentWriter::comment(UnitView text) {
    beginMarkup();
    addAscii("<!--");
    add(text, Part::MARKUP);
    addAscii("-->");
}

void DocumentWriter::processingInstruction(UnitView target, UnitView data) {
    beginMarkup();
    addAscii("<?");
    add(target, Part::MARKUP);
    addAscii(" ");
    add(data, Part::MARKUP);
    addAscii("?>");
}

// The line break and the indent in front of a piece of markup.
void DocumentWriter::beginMarkup(Break kind) {
    begin();
    closeStartTag();
    const bool isFirst = isAtStart;
    const bool followsText = isBehindText;
    isAtStart = isBehindText = false;
    if (isFirst) return;
    if (!style.isIndented) {
        if (openElements == 0 && kind != BEFORE_END_TAG) addAscii("\n");
        return;
    }
    if (followsText) return;
    addAscii("\n");
    const int depth = openElements + (isInDocumentType ? 1 : 0);
    for (int i = 0; i < depth; ++i) addAscii("  ");
}

void DocumentWriter::closeStartTag() {
    if (isInStartTag) addAscii(">");
    isInStartTag = false;
}

void DocumentWriter::add(UnitView text, Part::Kind kind) {
    const unsigned short* unit = text.data();
    const unsigned short* const end = unit + text.size();
    while (unit != end) {
        const unsigned short* start = unit;
        while (unit != end && isPlain(*unit, kind)) ++unit;
        addPlain({start, static_cast<std::size_t>(unit - start)});
        if (unit == end) return;
        start = unit;
        const char32_t character = next_character(unit, end);
        addCharacter(character, {start, static_cast<std::size_t>(unit - start)}, kind);
    }
}

bool DocumentWriter::isPlain(unsigned short unit, Part::Kind kind) {
    std::uint8_t& kinds = plain[unit];
    if (kinds == 0) {
        kinds = KNOWN;
        for (int i = Part::MARKUP; i <= Part::IDENTIFIER && taken(unit); ++i) {
            if (!is_referenced(unit, static_cast<Part::Kind>(i))) kinds |= 1U << i;
        }
    }
    return (kinds & 1U << kind) != 0;
}

void DocumentWriter::addCharacter(char32_t character, UnitView units, Part::Kind kind) {
    const bool isReference = can_have_references(kind) && !is_surrogate(character);
    if (isReference) {
        addAscii(reference_to(character, kind));
    } else if (style.keepsMisfits) {
        addPlain(units);
    } else {
        addAscii("?");
    }
}

// No pair of surrogates is cut: one comes by itself.
void DocumentWriter::addPlain(UnitView text) {
    for (; !text.empty(); text.remove_prefix(std::min(text.size(), FLUSHED_SIZE))) {
        pending += text.substr(0, FLUSHED_SIZE);
        if (pending.size() >= FLUSHED_SIZE) flush();
    }
}

void DocumentWriter::addAscii(std::string_view ascii) {
    pending.append(ascii.begin(), ascii.end());
}

void DocumentWriter::flush() {
    bytes.clear();
    encoding.encode(pending, bytes);
    output.write(bytes);
    pending.clear();
}

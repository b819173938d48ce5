// Writes a document in an encoding, so that it can be read again.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "document_sink.h"
#include "markup.h"
#include "output.h"
#include "taken_characters.h"

struct WritingStyle {
    // Whether markup that doesn't follow text has a line of its own, two blanks deeper for each
    // element around it. Otherwise lines are broken only outside the root element.
    bool isIndented;
    // Whether a character that the encoding doesn't take stays where no reference can stand. A
    // question mark takes its place otherwise.
    bool keepsMisfits;
};

constexpr WritingStyle CONVERTED = {false, false};
constexpr WritingStyle FORMATTED = {true, true};

// A character that would be read as something else, or that the encoding doesn't take, becomes a
// reference where one can stand. Attributes that the document type supplies are left out. A
// document without an XML declaration gets one if the encoding has to be declared.
class DocumentWriter final : public DocumentSink {
public:
    DocumentWriter(const TargetEncoding& target, const WritingStyle& writingStyle,
                   Output& destination);

    // Writes what is still to be written, and the last line end. Like all operations it lets
    // WriteError through.
    void finish();

    void xmlDeclaration(const XmlDeclaration& declaration) override;
    void documentType(UnitView text, const Literals& literals) override;
    void startElement(UnitView name, const std::vector<Attribute>& attributes) override;
    void endElement(UnitView name) override;
    void text(UnitView text) override;
    void startCdata() override;
    void endCdata() override;
    void comment(UnitView text) override;
    void processingInstruction(UnitView target, UnitView data) override;

private:
    enum Break { BEFORE_MARKUP, BEFORE_END_TAG };

    void begin();
    void beginMarkup(Break kind = BEFORE_MARKUP);
    void closeStartTag();
    void addPiece(const Piece& piece);
    void addLiteral(const Part& part);
    // Text as the kind of part wants it.
    void add(UnitView text, Part::Kind kind);
    void addPlain(UnitView text);
    void addCharacter(char32_t character, UnitView units, Part::Kind kind);
    void addAscii(std::string_view ascii);
    void flush();

    bool isPlain(unsigned short unit, Part::Kind kind);

    const TargetEncoding& encoding;
    const WritingStyle style;
    Output& output;
    TakenCharacters taken;
    Units pending;      // in front of what the output doesn't have yet
    std::string bytes;  // of a flush
    bool hasBegun = false;
    bool isAtStart = true;      // nothing stands in front, but for a declaration and its line end
    bool isInStartTag = false;  // which may turn out to be that of an empty element
    bool isBehindText = false;
    bool isInCdata = false;
    bool isInDocumentType = false;
    int openElements = 0;
    // For each unit the kinds of parts in which it stands for itself, a bit a kind, and whether
    // that is known.
    std::vector<std::uint8_t> plain;
};

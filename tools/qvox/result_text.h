// The text of a document as it is to come out: with its declaration, its line breaks, and nothing
// in it that the target encoding doesn't take.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "literals.h"
#include "markup.h"
#include "target_encoding.h"
#include "units.h"
#include "written_document.h"

struct ResultStyle {
    // Whether markup that doesn't follow text has a line of its own, two blanks deeper for each
    // element around it. Otherwise lines are broken only outside the root element.
    bool isIndented;
    // Whether a character that the target doesn't take stays where no reference can stand.
    bool keepsMisfits;
};

constexpr ResultStyle CONVERTED = {false, false};
constexpr ResultStyle FORMATTED = {true, true};

// The lines of the result in which a character stands that the encoding doesn't take.
using Misfits = std::map<char32_t, std::vector<int>>;

class ResultText {
public:
    ResultText(const TargetEncoding& target, const ResultStyle& resultStyle)
        : encoding(target), style(resultStyle) {}

    // Writes the declaration in the name of the target. To be called ahead of add(); where the
    // document has none, one is written only if the target needs it.
    void declare(const std::optional<XmlDeclaration>& declaration);
    // Writes the rest of the document. A character that would be read as another, or that the
    // target doesn't take and uses references for, becomes a reference if one may stand there.
    // Else, unless the style keeps it, what the target doesn't take is noted and a question mark
    // takes its place. Attributes that the document doesn't specify itself are left out, unless
    // nothing is known of that.
    void add(UnitView document, const Literals& literals, const SpecifiedAttributes& specified);

    const Units& text() const { return result; }
    // All but the declaration, NUL-terminated.
    unsigned short* body() { return result.data() + bodyStart; }
    const Misfits& misfits() const { return found; }

private:
    void addPiece(const Piece& piece);
    void breakLine(Piece::Kind kind);
    void addLiteral(const Part& part);
    void addPart(const Part& part);
    void addReference(char32_t character);
    void addAscii(std::string_view ascii);
    void endLine();
    bool takes(char32_t character);

    const TargetEncoding& encoding;
    const ResultStyle style;
    Units result;
    std::size_t bodyStart = 0;
    int line = 1;
    int openElements = 0;
    bool isInDoctype = false;
    bool isBehindText = false;
    Misfits found;

    enum Knowledge : char { UNKNOWN, TAKEN, REFUSED };
    std::vector<Knowledge> known = std::vector<Knowledge>(0x10000, UNKNOWN);  // of each unit
};

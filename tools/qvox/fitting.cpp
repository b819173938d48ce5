#include "fitting.h"

#include "characters.h"
#include "markup.h"

void Fitting::xmlDeclaration(const XmlDeclaration& declaration) {
    next.xmlDeclaration(declaration);
}

// Literals may hold characters that become references. The rest of the text has names and
// identifiers.
void Fitting::documentType(UnitView text, const Literals& literals) {
    constexpr const char* WHERE = "in the document type declaration";
    Units changed;
    MarkupCutter cutter(text, literals);
    for (Piece piece; cutter.next(piece);) {
        for (const Part& part : piece.parts) {
            const bool isFixed = part.kind == Part::MARKUP || part.kind == Part::IDENTIFIER;
            if (isFixed) fit(part.text, WHERE, changed);
        }
    }
    next.documentType(text, literals);
}

void Fitting::startElement(UnitView name, const std::vector<Attribute>& attributes) {
    changedNames.assign(attributes.size() + 1, {});
    fitted.clear();
    for (const Attribute& attribute : attributes) {
        fitted.push_back({fitName(attribute.name, changedNames[fitted.size()]), attribute.value,
                          attribute.isDefaulted});
    }
    next.startElement(fitName(name, changedNames.back()), fitted);
}

void Fitting::endElement(UnitView name) { next.endElement(name); }

void Fitting::text(UnitView text) {
    if (isInCdata) {
        addToSection(text);
    } else {
        next.text(text);
    }
}

// The section begins further on when it is known that it isn't empty, or that it is.
void Fitting::startCdata() {
    isInCdata = true;
    isSplit = false;
}

void Fitting::endCdata() {
    if (!isOpen && !isSplit) openSection();
    closeSection();
    isInCdata = false;
    if (isSplit) ++splits;
}

// No reference can stand in a section: a character that isn't taken stands between two of them.
void Fitting::addToSection(UnitView text) {
    while (!text.empty()) {
        std::size_t length = taken.lengthIn(text);
        if (length > 0) {
            openSection();
        } else {
            closeSection();
            isSplit = true;
            const unsigned short* unit = text.data();
            next_character(unit, text.data() + text.size());
            length = static_cast<std::size_t>(unit - text.data());
        }
        next.text(text.substr(0, length));
        text.remove_prefix(length);
    }
}

void Fitting::openSection() {
    if (!isOpen) next.startCdata();
    isOpen = true;
}

void Fitting::closeSection() {
    if (isOpen) next.endCdata();
    isOpen = false;
}

void Fitting::comment(UnitView text) {
    Units changed;
    next.comment(fit(text, "in a comment", changed));
}

void Fitting::processingInstruction(UnitView target, UnitView data) {
    constexpr const char* WHERE = "in a processing instruction";
    Units changedTarget;
    Units changedData;
    next.processingInstruction(fit(target, WHERE, changedTarget), fit(data, WHERE, changedData));
}

UnitView Fitting::fit(UnitView text, const char* where, Units& changed) {
    const unsigned short* const end = text.data() + text.size();
    std::size_t length = taken.lengthIn(text);
    if (length == text.size()) return text;
    changed.clear();
    for (UnitView rest = text; !rest.empty(); length = taken.lengthIn(rest)) {
        changed += rest.substr(0, length);
        rest.remove_prefix(length);
        if (rest.empty()) break;
        const unsigned short* unit = rest.data();
        found[{next_character(unit, end), where}].push_back(place);
        changed += '?';
        rest = {unit, static_cast<std::size_t>(end - unit)};
    }
    return changed;
}

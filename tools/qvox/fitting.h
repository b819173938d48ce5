// Makes a document fit an encoding: behind it no character that the encoding doesn't take stands
// where a reference can't take its place.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "document_sink.h"
#include "taken_characters.h"

// The places in which a character stands that doesn't fit, by the character and by what it is part
// of ("in a comment"). A place is the number of its markup, as MarkupCounter counts.
using Misfits = std::map<std::pair<char32_t, std::string>, std::vector<int>>;

class Fitting final : public DocumentSink {
public:
    // Passes the document on to `destination`, with a question mark in the place of each misfit but
    // for those in the document type declaration. They are noted with the number in `currentPlace`.
    Fitting(const TargetEncoding& target, DocumentSink& destination, const int& currentPlace)
        : next(destination), place(currentPlace), taken(target) {}

    const Misfits& misfits() const { return found; }
    // How many CDATA sections were split, because a character in them became a text of its own.
    int splitSections() const { return splits; }

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
    // The text, with question marks in the place of characters that don't fit.
    UnitView fit(UnitView text, const char* where, Units& changed);
    UnitView fitName(UnitView name, Units& changed) { return fit(name, "in a name", changed); }
    void addToSection(UnitView text);
    void openSection();
    void closeSection();

    DocumentSink& next;
    const int& place;
    TakenCharacters taken;
    Misfits found;
    int splits = 0;
    bool isInCdata = false;
    // Of the section in hand: whether one is open further on, and whether it takes several.
    bool isOpen = false;
    bool isSplit = false;
    std::vector<Attribute> fitted;
    std::vector<Units> changedNames;
};

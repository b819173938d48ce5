// What a document consists of, as a short digest by which two can be compared without keeping
// either.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "document_sink.h"
#include "taken_characters.h"

// Texts that follow each other are one; the XML declaration doesn't count. A character of the
// document type declaration that the encoding doesn't take counts as a question mark, and variants
// that it joins are one.
class EventDigest final : public DocumentSink {
public:
    explicit EventDigest(const TargetEncoding& target)
        : taken(target), joinsVariants(target.joinsVariants) {}

    // Keeps the words of the pieces of one block for first_difference.
    void keep(std::size_t block) { keptBlock = block; }
    // The declarations of an external subset stand in the result, and behind them once more where
    // that is read. Makes this the digest of the copy of a document, without the second ones.
    void setOriginal(const EventDigest& original) { typeLength = original.typeLength; }

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

    // One for each block of pieces.
    const std::vector<std::uint64_t>& blocks() const { return hashes; }
    const std::vector<std::string>& kept() const { return pieces; }

private:
    // A piece is what it is and its texts.
    void begin(const char* kind);
    void add(UnitView text);
    void addUnits(UnitView text);
    bool isKept() const { return hashes.size() == keptBlock + 1; }

    TakenCharacters taken;
    const bool joinsVariants;
    std::vector<std::uint64_t> hashes;
    std::size_t piecesInBlock = 0;
    bool isInText = false;

    std::size_t typeLength = 0;  // of the document type declaration, in units

    std::size_t keptBlock = std::string::npos - 1;  // none
    std::vector<std::string> pieces;
};

// The first block in which they differ, or -1 where there is none.
std::ptrdiff_t first_different_block(const EventDigest& a, const EventDigest& b);

// Of the kept blocks, as in `comment "\r" as "\n"`.
std::string first_difference(const EventDigest& original, const EventDigest& copy);

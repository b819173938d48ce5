#include "event_digest.h"

#include <algorithm>

#include "characters.h"
#include "escape.h"

namespace {

constexpr std::size_t BLOCK_SIZE = 256;   // pieces
constexpr std::size_t MOST_WORDS = 4096;  // bytes kept of a piece

// Of FNV-1a.
constexpr std::uint64_t PRIME = 0x100000001B3;
constexpr std::uint64_t BASIS = 0xCBF29CE484222325;

}  // namespace

void EventDigest::finish() { begin("end"); }

void EventDigest::begin(const char* kind) {
    isInText = false;
    if (piecesInBlock == BLOCK_SIZE || hashes.empty()) {
        piecesInBlock = 0;
        hashes.push_back(BASIS);
    }
    ++piecesInBlock;
    for (const char* letter = kind; *letter != '\0'; ++letter) {
        hashes.back() = (hashes.back() ^ static_cast<unsigned char>(*letter)) * PRIME;
    }
    if (isKept()) pieces.emplace_back(kind);
}

// A number that is no unit stands in front of each text of a piece.
void EventDigest::add(UnitView text) {
    constexpr std::uint64_t START = 0x10000;
    hashes.back() = (hashes.back() ^ START) * PRIME;
    if (isKept()) pieces.back() += " \"\"";
    addUnits(text);
}

void EventDigest::addUnits(UnitView text) {
    std::uint64_t hash = hashes.back();
    for (const unsigned short unit : text) {
        const bool isVariant = joinsVariants && unit >= 0x80;
        hash = (hash ^ (isVariant ? joined_variant(unit) : unit)) * PRIME;
    }
    hashes.back() = hash;
    if (!isKept() || pieces.back().size() > MOST_WORDS) return;
    pieces.back().pop_back();
    escape_units(pieces.back(), text.data(), static_cast<int>(std::min(text.size(), MOST_WORDS)),
                 Style::QUOTED);
    pieces.back() += '"';
}

// Made for the encoding of each.
void EventDigest::xmlDeclaration(const XmlDeclaration& /*declaration*/) {}

void EventDigest::documentType(UnitView text, const Literals& /*literals*/) {
    Units comparable;
    const unsigned short* const end = text.data() + text.size();
    for (const unsigned short* unit = text.data(); unit != end;) {
        const char32_t character = next_character(unit, end);
        comparable += taken(character) ? units_of(character) : Units(1, '?');
    }
    comparable.resize(comparable.size() - 2);  // "]>"
    const bool hasIdentifier = comparable.find('"') < comparable.find('[');
    if (typeLength == 0) typeLength = comparable.size();
    if (hasIdentifier) comparable.resize(std::min(comparable.size(), typeLength));
    begin("document type declaration");
    add(comparable);
}

void EventDigest::startElement(UnitView name, const std::vector<Attribute>& attributes) {
    begin("start tag");
    add(name);
    for (const Attribute& attribute : attributes) {
        begin(attribute.isDefaulted ? "defaulted attribute" : "attribute");
        add(attribute.name);
        add(attribute.value);
    }
}

void EventDigest::endElement(UnitView name) {
    begin("end tag");
    add(name);
}

void EventDigest::text(UnitView text) {
    if (text.empty()) return;
    if (!isInText) {
        begin("text");
        add({});
    }
    isInText = true;
    addUnits(text);
}

void EventDigest::startCdata() { begin("CDATA section"); }

void EventDigest::endCdata() { begin("end of CDATA section"); }

void EventDigest::comment(UnitView text) {
    begin("comment");
    add(text);
}

void EventDigest::processingInstruction(UnitView target, UnitView data) {
    begin("processing instruction");
    add(target);
    add(data);
}

std::ptrdiff_t first_different_block(const EventDigest& a, const EventDigest& b) {
    const auto& blocks = a.blocks();
    const auto& others = b.blocks();
    const auto [mine, theirs] =
        std::mismatch(blocks.begin(), blocks.end(), others.begin(), others.end());
    if (mine == blocks.end() && theirs == others.end()) return -1;
    return mine - blocks.begin();
}

namespace {

// From a little in front of the place on.
std::string excerpt(const std::string& text, std::size_t place) {
    constexpr std::size_t BEFORE = 30;
    constexpr std::size_t LENGTH = 100;
    const auto isInside = [&text](std::size_t i) {
        return i < text.size() && (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
    };
    std::size_t start = place > LENGTH ? place - BEFORE : 0;
    while (isInside(start)) --start;
    std::size_t end = std::min(start + LENGTH, text.size());
    while (isInside(end)) --end;
    return (start > 0 ? "..." : "") + text.substr(start, end - start) +
           (end < text.size() ? "..." : "");
}

}  // namespace

std::string first_difference(const EventDigest& original, const EventDigest& copy) {
    const auto& pieces = original.kept();
    const auto& others = copy.kept();
    const auto [mine, theirs] =
        std::mismatch(pieces.begin(), pieces.end(), others.begin(), others.end());
    const std::string piece = mine != pieces.end() ? *mine : "nothing";
    const std::string other = theirs != others.end() ? *theirs : "nothing";
    const auto fork = std::mismatch(piece.begin(), piece.end(), other.begin(), other.end());
    const auto place = static_cast<std::size_t>(fork.first - piece.begin());
    return excerpt(piece, place) + " as " + excerpt(other, place);
}

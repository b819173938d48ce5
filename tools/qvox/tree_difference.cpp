#include "tree_difference.h"

#include <algorithm>
#include <string_view>

#include "characters.h"
#include "escape.h"
#include "node_fields.h"
#include "units.h"

namespace {

// The places of two texts from which on they differ.
struct Fork {
    std::size_t original;
    std::size_t copy;
};

// A part of the text, which begins a little in front of the place.
std::string excerpt(const qvox::Xstring& text, std::size_t place) {
    constexpr std::size_t BEFORE = 10;
    constexpr std::size_t LENGTH = 40;
    if (text.isNull()) return "null";
    const std::size_t start = place - std::min(place, BEFORE);
    const UnitView shown = view_of(text).substr(start, LENGTH);
    std::string out = start > 0 ? "...\"" : "\"";
    escape_units(out, shown.data(), static_cast<int>(shown.size()), Style::QUOTED);
    return out + (start + shown.size() < view_of(text).size() ? "\"..." : "\"");
}

// The type of a node, and its name if it has one of its own.
std::string in_words(const qvox::Node* node) {
    if (node == nullptr) return "nothing";
    const NodeForm& form = form_of(*node);
    std::string text = form.type;
    if (form.fields[0].name != nullptr && node->getNodeName().data()[0] != '#') {
        text += ' ';
        quote(text, node->getNodeName());
    }
    return text;
}

class Comparison {
public:
    explicit Comparison(const IsReplaced& isReplacedCharacter) : isReplaced(isReplacedCharacter) {}

    // Of two trees. Where there is one, it is in difference().
    bool isSame(qvox::Node* original, qvox::Node* copy);

    const std::string& difference() const { return found; }

private:
    bool isSameAlone(const qvox::Node* original, const qvox::Node* copy);
    bool hasSameFields(const qvox::Node& original, const qvox::Node& copy);
    bool hasSameBelongings(qvox::Node& original, qvox::Node& copy);
    bool isSameMap(const qvox::NamedNodeMap* original, const qvox::NamedNodeMap* copy);
    bool isSameText(const qvox::Node& node, const char* field, const qvox::Xstring& original,
                    const qvox::Xstring& copy);
    Fork forkOf(UnitView original, UnitView copy) const;
    bool differ(const std::string& text);

    const IsReplaced& isReplaced;
    std::string found;
};

bool Comparison::differ(const std::string& text) {
    found = text;
    return false;
}

qvox::Node* first_compared_child(const qvox::Node& node) {
    return node.getNodeType() == qvox::Node::DOCUMENT_TYPE_NODE ? nullptr : node.getFirstChild();
}

bool Comparison::isSame(qvox::Node* original, qvox::Node* copy) {
    qvox::Node* const root = original;
    while (isSameAlone(original, copy) && hasSameBelongings(*original, *copy)) {
        qvox::Node* next = first_compared_child(*original);
        qvox::Node* nextCopy = first_compared_child(*copy);
        while (next == nullptr && nextCopy == nullptr) {
            if (original == root) return true;
            next = original->getNextSibling();
            nextCopy = copy->getNextSibling();
            original = original->getParentNode();
            copy = copy->getParentNode();
        }
        original = next;
        copy = nextCopy;
    }
    return false;
}

// Without what hangs from them. One of the two may be null.
bool Comparison::isSameAlone(const qvox::Node* original, const qvox::Node* copy) {
    const bool isOne = original == nullptr || copy == nullptr;
    if (isOne || original->getNodeType() != copy->getNodeType()) {
        return differ(in_words(original) + " as " + in_words(copy));
    }
    return hasSameFields(*original, *copy);
}

bool Comparison::hasSameFields(const qvox::Node& original, const qvox::Node& copy) {
    for (const NodeField& field : form_of(original).fields) {
        if (field.name == nullptr) break;
        if (!isSameText(original, field.name, field.get(original), field.get(copy))) return false;
    }
    if (is_defaulted(original) == is_defaulted(copy)) return true;
    return differ(in_words(&original) +
                  (is_defaulted(copy) ? ": specified as defaulted" : ": defaulted as specified"));
}

// All but the children.
bool Comparison::hasSameBelongings(qvox::Node& original, qvox::Node& copy) {
    if (!isSameMap(original.getAttributes(), copy.getAttributes())) return false;
    if (original.getNodeType() != qvox::Node::DOCUMENT_TYPE_NODE) return true;
    auto& type = static_cast<qvox::DocumentType&>(original);
    auto& typeCopy = static_cast<qvox::DocumentType&>(copy);
    return isSameMap(type.getEntities(), typeCopy.getEntities()) &&
           isSameMap(type.getNotations(), typeCopy.getNotations()) &&
           isSameText(type, "declarations", type.getInternalSubset(), typeCopy.getInternalSubset());
}

bool Comparison::isSameMap(const qvox::NamedNodeMap* original, const qvox::NamedNodeMap* copy) {
    const int length = original != nullptr ? original->getLength() : 0;
    const int copyLength = copy != nullptr ? copy->getLength() : 0;
    for (int i = 0; i < std::max(length, copyLength); ++i) {
        if (!isSameAlone(i < length ? original->item(i) : nullptr,
                         i < copyLength ? copy->item(i) : nullptr)) {
            return false;
        }
    }
    return true;
}

bool Comparison::isSameText(const qvox::Node& node, const char* field,
                            const qvox::Xstring& original, const qvox::Xstring& copy) {
    const bool isSameState =
        std::string_view(field) == "data" || original.isNull() == copy.isNull();
    const Fork fork = forkOf(view_of(original), view_of(copy));
    const bool isAtEnd =
        fork.original == view_of(original).size() && fork.copy == view_of(copy).size();
    if (isSameState && isAtEnd) return true;
    return differ(in_words(&node) + ": " + field + ' ' + excerpt(original, fork.original) + " as " +
                  excerpt(copy, fork.copy));
}

Fork Comparison::forkOf(UnitView original, UnitView copy) const {
    const unsigned short* unit = original.data();
    const unsigned short* unitCopy = copy.data();
    const unsigned short* const end = unit + original.size();
    const unsigned short* const endCopy = unitCopy + copy.size();
    Fork fork = {0, 0};
    while (unit != end && unitCopy != endCopy) {
        const char32_t character = next_character(unit, end);
        const char32_t characterCopy = next_character(unitCopy, endCopy);
        const bool isSame =
            character == characterCopy || (characterCopy == '?' && isReplaced(character));
        if (!isSame) break;
        fork = {static_cast<std::size_t>(unit - original.data()),
                static_cast<std::size_t>(unitCopy - copy.data())};
    }
    return fork;
}

}  // namespace

std::string first_difference(qvox::Document& original, qvox::Document& copy,
                             const IsReplaced& isReplaced) {
    Comparison comparison(isReplaced);
    comparison.isSame(&original, &copy);
    return comparison.difference();
}

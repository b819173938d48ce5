#include "dom/node_maker.h"

#include <cstring>
#include <new>

#include "dom/tree.h"

namespace qvox {

namespace {

// A text of fewer units takes the least memory that a text can take.
constexpr std::size_t SHORT_LENGTH = NodeBlock::UNIT / sizeof(Unit);

std::size_t bytes_of(const LentText& text) {
    return text.units != nullptr ? (static_cast<std::size_t>(text.length) + 1) * sizeof(Unit) : 0;
}

// A copy of the text at the given place behind a node.
LentText text_behind(const void* node, std::size_t nodeSize, const LentText& text) {
    if (text.units == nullptr) return text;
    auto* const units =
        reinterpret_cast<Unit*>(static_cast<unsigned char*>(const_cast<void*>(node)) + nodeSize);
    std::memcpy(units, text.units, static_cast<std::size_t>(text.length) * sizeof(Unit));
    units[text.length] = 0;
    return {units, text.length};
}

}  // namespace

ElementImpl* NodeMaker::element(const NodeName* name) {
    const NodePlace place = memory.take(sizeof(ElementImpl));
    return ::new (place.memory) ElementImpl(name, homeIn(place.block));
}

AttrImpl* NodeMaker::attribute(const NodeName* name, const LentText& value, bool specified) {
    const auto [place, text] = take(sizeof(AttrImpl), value);
    return ::new (place.memory) AttrImpl(name, text, specified, homeIn(place.block));
}

template <typename MadeNode>
MadeNode* NodeMaker::withText(const LentText& data) {
    const auto [place, text] = take(sizeof(MadeNode), data);
    return ::new (place.memory) MadeNode(text, homeIn(place.block));
}

TextImpl* NodeMaker::text(const LentText& data) { return withText<TextImpl>(data); }

// A place for a node that has a text.
NodeMaker::PlaceWithText NodeMaker::take(std::size_t nodeSize, const LentText& text) {
    KnownText* const known = knownText(text);
    if (known != nullptr && known->units != nullptr && known->block == memory.blockFor(nodeSize) &&
        std::memcmp(known->units, text.units, bytes_of(text)) == 0) {
        return {memory.take(nodeSize), {known->units, text.length}};
    }
    const NodePlace place = memory.take(nodeSize + bytes_of(text));
    const LentText copy = text_behind(place.memory, nodeSize, text);
    if (known != nullptr && place.block != nullptr) *known = {place.block, copy.units};
    return {place, copy};
}

// Where a text is looked for that may be there already; null for one that isn't worth it.
NodeMaker::KnownText* NodeMaker::knownText(const LentText& text) {
    if (text.length <= 0) return nullptr;
    const Unit* const units = text.units;
    if (static_cast<std::size_t>(text.length) < SHORT_LENGTH) {
        // The units that it doesn't have are the NUL behind it.
        const unsigned mark = units[0] + 29U * units[1] + (units[1] != 0 ? 41U * units[2] : 0U);
        return &shorts[mark % SHORT_COUNT];
    }
    const bool mayBeBlank = units[0] <= ' ' && static_cast<std::size_t>(text.length) < BLANK_COUNT;
    return mayBeBlank ? &blanks[text.length] : nullptr;
}

CDATASectionImpl* NodeMaker::cdataSection(const LentText& data) {
    return withText<CDATASectionImpl>(data);
}

CommentImpl* NodeMaker::comment(const LentText& data) { return withText<CommentImpl>(data); }

ProcessingInstructionImpl* NodeMaker::instruction(const LentText& target, const LentText& data) {
    const std::size_t dataPlace = sizeof(ProcessingInstructionImpl) + bytes_of(target);
    const NodePlace place = memory.take(dataPlace + bytes_of(data));
    const LentText targetCopy =
        text_behind(place.memory, sizeof(ProcessingInstructionImpl), target);
    const LentText dataCopy = text_behind(place.memory, dataPlace, data);
    return ::new (place.memory)
        ProcessingInstructionImpl(targetCopy, dataCopy, homeIn(place.block));
}

}  // namespace qvox

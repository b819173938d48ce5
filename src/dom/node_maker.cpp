#include "dom/node_maker.h"

#include <cstring>
#include <new>

#include "dom/tree.h"

namespace qvox {

namespace {

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
    const NodePlace place = memory.take(sizeof(AttrImpl) + bytes_of(value));
    const LentText copy = text_behind(place.memory, sizeof(AttrImpl), value);
    return ::new (place.memory) AttrImpl(name, copy, specified, homeIn(place.block));
}

template <typename MadeNode>
MadeNode* NodeMaker::withText(const LentText& data) {
    const NodePlace place = memory.take(sizeof(MadeNode) + bytes_of(data));
    const LentText copy = text_behind(place.memory, sizeof(MadeNode), data);
    return ::new (place.memory) MadeNode(copy, homeIn(place.block));
}

// A text may lie behind another node, as long as one block has both.
TextImpl* NodeMaker::text(const LentText& data) {
    const bool mayBeBlank = data.length > 0 && data.units[0] <= ' ' &&
                            static_cast<std::size_t>(data.length) < BLANK_COUNT;
    if (!mayBeBlank) return withText<TextImpl>(data);
    Blank& blank = blanks[data.length];
    if (blank.units != nullptr && blank.block == memory.blockFor(sizeof(TextImpl)) &&
        std::memcmp(blank.units, data.units, bytes_of(data)) == 0) {
        const NodePlace place = memory.take(sizeof(TextImpl));
        return ::new (place.memory)
            TextImpl(LentText{blank.units, data.length}, homeIn(place.block));
    }
    auto* const node = withText<TextImpl>(data);
    const NodeBlock& block = NodeLinks::blockOf(node);
    if (!block.isSingle()) blank = {&block, node->getData().data()};
    return node;
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

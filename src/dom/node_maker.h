// Makes the nodes that trees have most of, where parsing or copying makes many: each is one piece
// of memory, its text with it.
#pragma once

#include <cstddef>

#include "dom/attr.h"
#include "dom/character_data.h"
#include "dom/element.h"
#include "dom/name_pool.h"
#include "dom/node_memory.h"
#include "dom/small_nodes.h"

namespace qvox {

// What is made has no place yet. Texts are copied; names are in the pool of the memory's document.
class NodeMaker {
public:
    explicit NodeMaker(NodeMemory& nodeMemory) : memory(nodeMemory) {}

    ElementImpl* element(const NodeName* name);
    AttrImpl* attribute(const NodeName* name, const LentText& value, bool specified);
    TextImpl* text(const LentText& data);
    CDATASectionImpl* cdataSection(const LentText& data);
    CommentImpl* comment(const LentText& data);
    ProcessingInstructionImpl* instruction(const LentText& target, const LentText& data);

private:
    // White space between elements is the same again and again.
    struct Blank {
        const NodeBlock* block;
        const Unit* units;
    };
    static constexpr std::size_t BLANK_COUNT = 32;

    NodeHome homeIn(NodeBlock* block) const { return {memory.getDocument(), block}; }
    template <typename MadeNode>
    MadeNode* withText(const LentText& data);

    NodeMemory& memory;
    Blank blanks[BLANK_COUNT] = {};  // the last one of each length
};

}  // namespace qvox

// The concrete text nodes.
#pragma once

#include <qvox/dom.h>

#include "dom/node_memory.h"
#include "text/lent_text.h"
#include "text/wide.h"

namespace qvox {

inline CharacterData::CharacterData(const LentText& text, const NodeHome& home) noexcept
    : Node(home), data(text.string()) {}

class TextImpl final : public Text {
public:
    // A null text leaves the node without data.
    TextImpl(const Unit* text, Document* document) : Text(text, document) {}
    TextImpl(const LentText& text, const NodeHome& home) noexcept : Text(text, home) {}

    int getNodeType() const override { return TEXT_NODE; }
    Text* splitText(int offset) override;
};

class CDATASectionImpl final : public CDATASection {
public:
    CDATASectionImpl(const Unit* text, Document* document) : CDATASection(text, document) {}
    CDATASectionImpl(const LentText& text, const NodeHome& home) noexcept
        : CDATASection(text, home) {}

    int getNodeType() const override { return CDATA_SECTION_NODE; }
    Text* splitText(int offset) override;
};

class CommentImpl final : public Comment {
public:
    CommentImpl(const Unit* text, Document* document) : Comment(text, document) {}
    CommentImpl(const LentText& text, const NodeHome& home) noexcept : Comment(text, home) {}

    int getNodeType() const override { return COMMENT_NODE; }
};

}  // namespace qvox

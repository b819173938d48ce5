#include "dom/character_data.h"

#include <algorithm>
#include <utility>

#include "dom/tree.h"

namespace qvox {

namespace {

void check_index(bool isValid) {
    if (!isValid) throw DOMException(DOMException::INDEX_SIZE_ERR, "invalid index");
}

void check_offset(const CharacterData& node, int offset) {
    check_index(offset >= 0 && offset <= node.getLength());
}

// The number of units of `count` that there are behind the offset.
int checked_count(const CharacterData& node, int offset, int count) {
    check_offset(node, offset);
    check_index(count >= 0);
    return std::min(count, node.getLength() - offset);
}

// The new node is a Text in any case.
Text* split(Text& node, int offset) {
    check_offset(node, offset);
    const DocumentGuard guard(&node);
    Node* parent = Tree::parentOf(&node);
    Node* next = Tree::nextSiblingNoLock(&node);
    const int tailLength = node.getLength() - offset;
    const Xstring tail = node.substringData(offset, tailLength);
    OwnedNode<Text> added(new TextImpl(tail.data(), node.getOwnerDocument()));
    node.deleteData(offset, tailLength);
    if (parent != nullptr) Tree::insertBeforeNoCheck(parent, added.get(), next);
    return added.release();
}

}  // namespace

CharacterData::CharacterData(const unsigned short* text, const NodeHome& home) : Node(home) {
    data = text;
}

const Xstring& CharacterData::getData() const { return data; }

int CharacterData::getLength() const { return data.length(); }

void CharacterData::setData(const Xstring& arg) {
    Tree::touch(this);
    data = arg;
}

void CharacterData::appendData(const Xstring& arg) {
    Tree::touch(this);
    data += arg;
}

Xstring CharacterData::substringData(int offset, int count) const {
    return data.substr(offset, checked_count(*this, offset, count));
}

void CharacterData::insertData(int offset, const Xstring& arg) {
    check_offset(*this, offset);
    replaceData(offset, 0, arg);
}

void CharacterData::deleteData(int offset, int count) {
    const int cut = checked_count(*this, offset, count);
    if (cut != 0) replaceData(offset, cut, Xstring());
}

void CharacterData::replaceData(int offset, int count, const Xstring& arg) {
    const int cut = checked_count(*this, offset, count);
    if (cut == 0 && arg.length() == 0) return;
    Xstring changed = data.substr(0, offset);
    changed += arg;
    changed += data.substr(offset + cut, data.length());
    Tree::touch(this);
    data = std::move(changed);
}

const Xstring& CharacterData::getNodeValue() const { return getData(); }

void CharacterData::setNodeValue(const Xstring& nodeValue) { setData(nodeValue); }

Text* TextImpl::splitText(int offset) { return split(*this, offset); }

Text* CDATASectionImpl::splitText(int offset) { return split(*this, offset); }

}  // namespace qvox

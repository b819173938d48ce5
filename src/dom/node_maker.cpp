#include "dom/node_maker.h"

#include <cstdint>
#include <cstring>
#include <new>

#include "dom/character_data.h"
#include "dom/document.h"
#include "dom/tree.h"

namespace qvox {

namespace {

constexpr std::size_t SLOT_SIZE = sizeof(void*);

std::size_t slot_of(const Unit* text, std::size_t slotCount) {
    return reinterpret_cast<std::uintptr_t>(text) / sizeof(Unit) % slotCount;
}

std::size_t bytes_of_text(std::size_t length) { return (length + 1) * sizeof(Unit); }

bool fits_behind(std::size_t nodeSize, std::size_t length) {
    return length < NodeMemory::LARGEST_PIECE &&
           nodeSize + bytes_of_text(length) <= NodeMemory::LARGEST_PIECE;
}

// A copy of the text in `memory`.
LentText text_at(void* memory, const Unit* text, std::size_t length) {
    std::memcpy(memory, text, bytes_of_text(length));
    return {static_cast<const Unit*>(memory), static_cast<int>(length)};
}

template <typename MadeNode>
MadeNode* in_chunk(MadeNode* node) {
    Tree::setInChunk(node);
    return node;
}

}  // namespace

const PooledName* NodeMaker::pooled(const Unit* text) {
    KnownName& known = otherNames[slot_of(text, KNOWN_COUNT)];
    if (known.text != text) known = {text, document.getNames().intern(text)};
    return known.name;
}

QualifiedName NodeMaker::qualifiedName(const Unit* uri, const Unit* name) {
    KnownName& known = qualifiedNames[slot_of(name, KNOWN_COUNT)];
    if (known.text != name) known = {name, document.getNames().internQualified(name)};
    return {pooled(uri), known.name};
}

ElementImpl* NodeMaker::element(const Unit* uri, const Unit* qualifiedName,
                                std::size_t attributeCount) {
    const QualifiedName name = this->qualifiedName(uri, qualifiedName);
    if (attributeCount == 0) {
        return in_chunk(::new (memory.take(sizeof(ElementImpl))) ElementImpl(name, &document));
    }
    const std::size_t slotCount = attributeCount == 1 ? 0 : attributeCount;
    if (slotCount > (NodeMemory::LARGEST_PIECE - sizeof(ElementWithMap)) / SLOT_SIZE) {
        OwnedNode<ElementImpl> element(new ElementImpl(name, &document));
        element->ownAttributeMap().reserve(attributeCount);
        return element.release();
    }
    void* const piece = memory.take(sizeof(ElementWithMap) + slotCount * SLOT_SIZE);
    void* const slots = static_cast<unsigned char*>(piece) + sizeof(ElementWithMap);
    return in_chunk(
        ::new (piece) ElementWithMap(name, static_cast<Node**>(slots), attributeCount, &document));
}

AttrImpl* NodeMaker::attribute(const AttrImpl::Init& init) {
    const std::size_t length = wide_length(init.value);
    if (!fits_behind(sizeof(AttrImpl), length)) return new AttrImpl(init, &document);
    const AttrImpl::PooledInit pooledInit = {qualifiedName(init.namespaceURI, init.qualifiedName),
                                             pooled(init.attributeType), pooled(init.defaultValue),
                                             init.specified, init.ownerElement};
    auto* piece =
        static_cast<unsigned char*>(memory.take(sizeof(AttrImpl) + bytes_of_text(length)));
    const LentText value = text_at(piece + sizeof(AttrImpl), init.value, length);
    return in_chunk(::new (piece) AttrImpl(pooledInit, value, &document));
}

Node* NodeMaker::text(const Unit* text) {
    const std::size_t length = wide_length(text);
    if (!fits_behind(sizeof(TextImpl), length)) return new TextImpl(text, &document);
    auto* piece =
        static_cast<unsigned char*>(memory.take(sizeof(TextImpl) + bytes_of_text(length)));
    const LentText data = text_at(piece + sizeof(TextImpl), text, length);
    return in_chunk(::new (piece) TextImpl(data, &document));
}

}  // namespace qvox

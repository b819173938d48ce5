#include "dom/name_pool.h"

#include <cstring>
#include <memory>
#include <new>
#include <type_traits>

#include <qvox/exception.h>

#include "text/lent_text.h"

namespace qvox {

namespace {

struct FreeMemory {
    void operator()(void* memory) const { ::operator delete(memory); }
};

}  // namespace

// A name owns nothing but its memory: its text is lent to it.
NamePool::~NamePool() { names.visit_all(FreeMemory()); }

const PooledName* NamePool::intern(const Unit* text) {
    return text != nullptr ? &entry(text) : nullptr;
}

const PooledName* NamePool::internQualified(const Unit* text) {
    if (text == nullptr) return nullptr;
    PooledName& name = entry(text);
    if (name.local != nullptr) return &name;
    const View whole(text);
    const std::size_t colon = whole.find(Unit{':'});
    const bool hasPrefix = colon != View::npos;
    name.prefix = &entry(whole.substr(0, hasPrefix ? colon : 0));
    name.local = &entry(hasPrefix ? whole.substr(colon + 1) : whole);
    return &name;
}

const NodeName* NamePool::nodeName(const NodeName& name) {
    static_assert(std::is_trivially_copyable_v<NodeName>);
    if (name.name == nullptr) return &*nodeNames.insert(name).first;
    auto& entry = const_cast<PooledName&>(*name.name);
    if (entry.first.name == nullptr) entry.first = name;
    if (entry.first == name) return &entry.first;
    if (entry.recent == nullptr || !(*entry.recent == name)) {
        entry.recent = &*nodeNames.insert(name).first;
    }
    return entry.recent;
}

const NodeName* NamePool::nodeName(const Unit* uri, const Unit* qualifiedName,
                                   const Unit* attributeType, const Unit* defaultValue) {
    return nodeName(
        {internQualified(qualifiedName), intern(uri), intern(attributeType), intern(defaultValue)});
}

const NodeName* NamePool::withPrefix(const NodeName& name, const Xstring& prefix) {
    if (name.uri == nullptr) {
        throw DOMException(DOMException::NAMESPACE_ERR, "namespaceURI is null");
    }
    Xstring renamed("");
    renamed += prefix;
    renamed += Unit{':'};
    renamed += name.getLocalName();
    NodeName changed = name;
    changed.name = internQualified(renamed.data());
    return nodeName(changed);
}

PooledName& NamePool::entry(View text) {
    const std::size_t length = text.size();
    const std::uint32_t hash = names.hash_of(text.data(), length);
    if (PooledName* const known = names.find(text.data(), length, hash)) return *known;
    const std::size_t textSize = length * sizeof(Unit);
    std::unique_ptr<void, FreeMemory> memory(
        ::operator new(sizeof(PooledName) + textSize + sizeof(Unit)));
    auto* const units = reinterpret_cast<Unit*>(static_cast<PooledName*>(memory.get()) + 1);
    std::memcpy(units, text.data(), textSize);
    units[length] = 0;
    auto* const name = new (memory.get())
        PooledName{lent_text(units, length).string(), nullptr, nullptr, {}, nullptr, hash, nullptr};
    names.enter(*name);
    static_cast<void>(memory.release());
    return *name;
}

}  // namespace qvox

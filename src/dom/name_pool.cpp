#include "dom/name_pool.h"

#include <string>
#include <type_traits>

#include <qvox/exception.h>

namespace qvox {

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
    name.prefix = &entry(hasPrefix ? whole.substr(0, colon) : View());
    name.local = &entry(hasPrefix ? whole.substr(colon + 1) : whole);
    return &name;
}

const NodeName* NamePool::nodeName(const NodeName& name) {
    static_assert(std::is_trivially_copyable_v<NodeName>);
    if (name.name == nullptr) return &*nodeNames.insert(name).first;
    const NodeName*& recentOne = const_cast<PooledName*>(name.name)->recent;
    if (recentOne == nullptr || *recentOne < name || name < *recentOne) {
        recentOne = &*nodeNames.insert(name).first;
    }
    return recentOne;
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
    PooledName*& candidate = recent[wide_mark(text.data(), length) % RECENT_COUNT];
    if (candidate == nullptr || candidate->text.length() != static_cast<int>(length) ||
        View(candidate->text.data(), length) != text) {
        candidate = &search(text);
    }
    return *candidate;
}

// An entry is found by a view of the caller's text, and entered under a view of its own.
PooledName& NamePool::search(View text) {
    const auto place = names.lower_bound(text);
    if (place != names.end() && place->first == text) return *place->second;
    auto name = std::make_unique<PooledName>();
    name->text = std::basic_string<Unit, UnitTraits>(text).c_str();
    const View key(name->text.data(), text.size());
    return *names.emplace_hint(place, key, std::move(name))->second;
}

}  // namespace qvox

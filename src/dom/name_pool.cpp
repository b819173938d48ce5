#include "dom/name_pool.h"

#include <string>

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

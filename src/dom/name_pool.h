// The names of a document, each stored once: qualified names, namespace URIs, attribute types and
// default values. Nodes hold pointers to them, which stay valid as long as the document.
#pragma once

#include <cstdint>
#include <set>
#include <string_view>
#include <tuple>

#include <qvox/xstring.h>

#include "runtime/text_table.h"
#include "text/wide.h"

namespace qvox {

struct PooledName;

// What the names of an element or attribute are: shared by all nodes that have the same ones.
struct NodeName {
    const PooledName* name;           // or null
    const PooledName* uri;            // or null
    const PooledName* attributeType;  // of an attribute, as declared, or null
    const PooledName* defaultValue;   // the same

    const Xstring& getName() const;
    const Xstring& getNamespaceURI() const;
    // Both are null for a name without namespace.
    const Xstring& getLocalName() const;
    const Xstring& getPrefix() const;

    auto all() const { return std::tie(name, uri, attributeType, defaultValue); }
    bool operator<(const NodeName& other) const { return all() < other.all(); }
    bool operator==(const NodeName& other) const { return all() == other.all(); }
};

// Its text lies behind it.
struct PooledName {
    Xstring text;
    // The parts of a qualified name at its first colon; null until the name was used as one. A name
    // without colon has the empty prefix.
    const PooledName* prefix;
    const PooledName* local;
    // The names of nodes that were asked for with this one first, and last of the others.
    NodeName first;
    const NodeName* recent;
    std::uint32_t hash;
    PooledName* next;  // in its bucket
};

class NamePool {
public:
    NamePool() = default;
    NamePool(const NamePool&) = delete;
    NamePool& operator=(const NamePool&) = delete;
    ~NamePool();

    // The pooled text; null for null.
    const PooledName* intern(const Unit* text);
    // The same with its parts, so that getters find them without a change of the pool.
    const PooledName* internQualified(const Unit* text);
    // The one of the names that are given, which are in this pool.
    const NodeName* nodeName(const NodeName& name);
    // The same by texts, which may be null.
    const NodeName* nodeName(const Unit* uri, const Unit* qualifiedName,
                             const Unit* attributeType = nullptr,
                             const Unit* defaultValue = nullptr);
    // That name with another prefix, which is not checked. DOMException NAMESPACE_ERR for a name
    // without namespace.
    const NodeName* withPrefix(const NodeName& name, const Xstring& prefix);

private:
    using View = std::basic_string_view<Unit, UnitTraits>;

    PooledName& entry(View text);

    TextTable<PooledName> names;
    std::set<NodeName> nodeNames;  // but for the first ones of their names
};

// The text of a pooled name, or Xstring::Null.
inline const Xstring& text_of(const PooledName* name) {
    return name != nullptr ? name->text : Xstring::Null;
}

inline const Xstring& NodeName::getName() const { return text_of(name); }

inline const Xstring& NodeName::getNamespaceURI() const { return text_of(uri); }

inline const Xstring& NodeName::getLocalName() const {
    return uri != nullptr && name != nullptr ? name->local->text : Xstring::Null;
}

inline const Xstring& NodeName::getPrefix() const {
    return uri != nullptr && name != nullptr ? name->prefix->text : Xstring::Null;
}

}  // namespace qvox

// The names of a document, each stored once: qualified names, namespace URIs, attribute types and
// default values. Nodes hold pointers to them, which stay valid as long as the document.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string_view>
#include <tuple>

#include <qvox/xstring.h>

#include "text/wide.h"

namespace qvox {

struct NodeName;

struct PooledName {
    Xstring text;
    // The parts of a qualified name at its first colon; null until the name was used as one. A name
    // without colon has the empty prefix.
    const PooledName* prefix = nullptr;
    const PooledName* local = nullptr;
    const NodeName* recent = nullptr;  // the name of nodes that was asked for last with this one
};

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

    bool operator<(const NodeName& other) const {
        return std::tie(name, uri, attributeType, defaultValue) <
               std::tie(other.name, other.uri, other.attributeType, other.defaultValue);
    }
};

class NamePool {
public:
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
    PooledName& search(View text);

    // The names asked for last, by a cheap mark of their text: most names of a document are one of
    // a few, and are found here without a search.
    static constexpr std::size_t RECENT_COUNT = 64;
    PooledName* recent[RECENT_COUNT] = {};

    std::map<View, std::unique_ptr<PooledName>> names;  // keyed by the text of the entry itself
    std::set<NodeName, std::less<>> nodeNames;
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

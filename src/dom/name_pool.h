// The names of a document, each stored once: qualified names, namespace URIs, attribute types and
// default values. Nodes hold pointers to them, which stay valid as long as the document.
#pragma once

#include <map>
#include <memory>
#include <string_view>

#include <qvox/xstring.h>

#include "text/wide.h"

namespace qvox {

struct PooledName {
    Xstring text;
    // The parts of a qualified name at its first colon; null until the name was used as one. A name
    // without colon has the empty prefix.
    const PooledName* prefix = nullptr;
    const PooledName* local = nullptr;
};

class NamePool {
public:
    // The pooled text; null for null.
    const PooledName* intern(const Unit* text);
    // The same with its parts, so that getters find them without a change of the pool.
    const PooledName* internQualified(const Unit* text);

private:
    using View = std::basic_string_view<Unit, UnitTraits>;

    PooledName& entry(View text);
    PooledName& search(View text);

    // The names asked for last, by a cheap mark of their text: most names of a document are one of
    // a few, and are found here without a search.
    static constexpr std::size_t RECENT_COUNT = 256;
    PooledName* recent[RECENT_COUNT] = {};

    std::map<View, std::unique_ptr<PooledName>> names;  // keyed by the text of the entry itself
};

// The text of a pooled name, or Xstring::Null.
inline const Xstring& text_of(const PooledName* name) {
    return name != nullptr ? name->text : Xstring::Null;
}

}  // namespace qvox

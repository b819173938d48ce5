// What elements and attributes share: a qualified name and a namespace, both in the name pool of
// the document.
#pragma once

#include "dom/name_pool.h"

namespace qvox {

class DocumentImpl;

class QualifiedName {
public:
    QualifiedName(const Unit* namespaceURI, const Unit* qualifiedName, DocumentImpl& document);
    // Of names that are in the pool; either may be null.
    QualifiedName(const PooledName* namespaceURI, const PooledName* qualifiedName)
        : uri(namespaceURI), name(qualifiedName) {}

    const Xstring& getName() const { return text_of(name); }
    const Xstring& getNamespaceURI() const { return text_of(uri); }
    // Both are null for a name without namespace.
    const Xstring& getLocalName() const;
    const Xstring& getPrefix() const;
    // DOMException NAMESPACE_ERR for a name without namespace. The prefix is not checked.
    void setPrefix(const Xstring& prefix, DocumentImpl& document);

private:
    const PooledName* uri;
    const PooledName* name;
};

}  // namespace qvox

#include "dom/qualified_name.h"

#include "dom/document.h"

namespace qvox {

QualifiedName::QualifiedName(const Unit* namespaceURI, const Unit* qualifiedName,
                             DocumentImpl& document)
    : uri(document.getNames().intern(namespaceURI)),
      name(document.getNames().internQualified(qualifiedName)) {}

const Xstring& QualifiedName::getLocalName() const {
    return uri != nullptr && name != nullptr ? name->local->text : Xstring::Null;
}

const Xstring& QualifiedName::getPrefix() const {
    return uri != nullptr && name != nullptr ? name->prefix->text : Xstring::Null;
}

void QualifiedName::setPrefix(const Xstring& prefix, DocumentImpl& document) {
    if (uri == nullptr) throw DOMException(DOMException::NAMESPACE_ERR, "namespaceURI is null");
    Xstring renamed("");
    renamed += prefix;
    renamed += Unit{':'};
    renamed += getLocalName();
    name = document.getNames().internQualified(renamed.data());
}

}  // namespace qvox

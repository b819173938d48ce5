#include "dom/document_type.h"

#include <mutex>

namespace qvox {

DocumentTypeImpl::DocumentTypeImpl(const Unit* typeName, const Unit* publicIdentifier,
                                   const Unit* systemIdentifier,
                                   DOMImplementation* domImplementation)
    : DocumentType(nullptr), declarations(this), implementation(domImplementation) {
    name = typeName;
    publicId = publicIdentifier;
    systemId = systemIdentifier;
}

const Xstring& DocumentTypeImpl::getInternalSubset() {
    const std::lock_guard<Lock> guard(subsetLock);
    if (!internalSubset.isNull()) return internalSubset;
    Xstring text;
    for (const Node* node = declarations.front(); node != nullptr; node = NodeLinks::next(node)) {
        text += declaration_text(static_cast<const DeclNode&>(*node));
        text += ">\n";
    }
    internalSubset = text;
    return internalSubset;
}

NamedNodeMapImpl& DocumentTypeImpl::made(std::unique_ptr<NamedNodeMapImpl>& map) {
    if (map == nullptr) map = std::make_unique<NamedNodeMapImpl>(this);
    return *map;
}

}  // namespace qvox

#include "dom/dom_implementation.h"

#include <utility>

#include "dom/arguments.h"
#include "dom/document.h"
#include "dom/document_type.h"
#include "dom/tree.h"

namespace qvox {

DOMImplementationImpl defaultImplementation;

namespace {

struct Feature {
    const char* name;
    const char* version;
};

constexpr Feature FEATURES[] = {
    {"XML", "1.0"}, {"HTML", "1.0"}, {"CORE", "2.0"}, {"Traversal", "2.0"}, {"Range", "2.0"},
};

}  // namespace

Document* DOMImplementationImpl::createDocument(const Xstring& namespaceURI,
                                                const Xstring& qualifiedName,
                                                DocumentType* doctype) {
    OwnedNode<DocumentImpl> document(new DocumentImpl(this));
    OwnedNode<Element> root(document->createElementNS(namespaceURI, qualifiedName));
    if (doctype != nullptr) Tree::appendChildNoCheck(document.get(), doctype);
    append_owned(document.get(), std::move(root));
    return document.release();
}

DocumentType* DOMImplementationImpl::createDocumentType(const Xstring& qualifiedName,
                                                        const Xstring& publicId,
                                                        const Xstring& systemId) {
    return new DocumentTypeImpl(units_of(qualifiedName), units_of(publicId), units_of(systemId),
                                this);
}

bool DOMImplementationImpl::hasFeature(const Xstring& feature, const Xstring& version) {
    for (const Feature& known : FEATURES) {
        if (wide_narrow_casecompare(feature.data(), known.name) != 0) continue;
        return version.isNull() || version == known.version;
    }
    return false;
}

}  // namespace qvox

#pragma once

#include <qvox/dom.h>

#include "dom/tree.h"

namespace qvox {

class DOMImplementationImpl final : public DOMImplementation {
public:
    Document* createDocument(const Xstring& namespaceURI, const Xstring& qualifiedName,
                             DocumentType* doctype) override;
    DocumentType* createDocumentType(const Xstring& qualifiedName, const Xstring& publicId,
                                     const Xstring& systemId) override;
    void freeDocument(Document* document) override { Tree::destroy(document); }
    bool hasFeature(const Xstring& feature, const Xstring& version) override;
};

// The one implementation of the process.
extern DOMImplementationImpl defaultImplementation;

}  // namespace qvox

// The literals of a document type, as a parse tells them: in the library's text of a declaration it
// can't be told where one with a double quote in it ends.
#pragma once

#include <vector>

#include <qvox/qvox.h>

#include "units.h"

// Identifiers, entity values and attribute defaults in the order in which they stand in the text of
// the declarations, those that an attribute-list declaration repeats included. A line feed stands
// for a carriage return too.
using Literals = std::vector<Units>;

class LiteralRecorder final : public qvox::DefaultHandler, public qvox::DeclHandler {
public:
    // Records the declarations that the parser reads.
    void attach(qvox::SAXParser& parser);
    // Records the identifiers of the document type itself.
    void startDTD(const qvox::Xstring& publicId, const qvox::Xstring& systemId);

    const Literals& literals() const { return recorded; }

    void attributeDecl(const qvox::Xstring& elementName, const qvox::Xstring& attributeName,
                       const qvox::Xstring& type, const qvox::Xstring& valueDefault,
                       const qvox::Xstring& value) override;
    void externalEntityDecl(const qvox::Xstring& name, const qvox::Xstring& publicId,
                            const qvox::Xstring& systemId) override;
    void internalEntityDecl(const qvox::Xstring& name, const qvox::Xstring& value) override;
    void notationDecl(const qvox::Xstring& name, const qvox::Xstring& publicId,
                      const qvox::Xstring& systemId) override;

    void elementDecl(const qvox::Xstring& /*name*/, const qvox::Xstring& /*model*/) override {}

private:
    void record(const qvox::Xstring& literal);

    Literals recorded;
};

// A document as `convert` and `format` pass it on: piece by piece, in document order.
#pragma once

#include <string>
#include <vector>

#include "literals.h"
#include "units.h"

struct XmlDeclaration {
    std::string version;
    std::string standalone;  // empty where it isn't declared
};

struct Attribute {
    UnitView name;
    UnitView value;
    bool isDefaulted;  // supplied by the document type
};

// Texts are valid during the call only. Those that follow each other are one text, and so are those
// between startCdata and endCdata.
class DocumentSink {
public:
    virtual ~DocumentSink() = default;

    virtual void xmlDeclaration(const XmlDeclaration& declaration) = 0;
    // The declaration as the library writes it, and its literals.
    virtual void documentType(UnitView text, const Literals& literals) = 0;
    virtual void startElement(UnitView name, const std::vector<Attribute>& attributes) = 0;
    virtual void endElement(UnitView name) = 0;
    virtual void text(UnitView text) = 0;
    virtual void startCdata() = 0;
    virtual void endCdata() = 0;
    virtual void comment(UnitView text) = 0;
    virtual void processingInstruction(UnitView target, UnitView data) = 0;
};

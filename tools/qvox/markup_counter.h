// Numbers the markup of a document, so that a place in its events is a place in its file.
//
// A parse tells no places but those of errors. What both sides can count is markup: start tags,
// comments, processing instructions, CDATA sections and the document type declaration, from 1 on.
// What comes out of an entity isn't counted: it stands where the markup in front of its reference
// does.
#pragma once

#include <qvox/qvox.h>

class MarkupCounter : public qvox::DefaultHandler, public qvox::LexicalHandler {
public:
    // Keeps the number of the markup in hand or, in text, in front of it, in `place`; 0 at the
    // start.
    explicit MarkupCounter(int& place) : count(place) { count = 0; }

    int place() const { return count; }

protected:
    // To be called at the event of such markup, ahead of all that makes use of place().
    void countMarkup() {
        if (openEntities == 0) ++count;
    }
    bool isInDocumentType() const { return inDocumentType; }

    void startDTD(const qvox::Xstring& /*name*/, const qvox::Xstring& /*publicId*/,
                  const qvox::Xstring& /*systemId*/) override {
        countMarkup();
        inDocumentType = true;
    }
    void endDTD() override { inDocumentType = false; }
    void startEntity(const qvox::Xstring& /*name*/) override { ++openEntities; }
    void endEntity(const qvox::Xstring& /*name*/) override { --openEntities; }

private:
    int& count;
    int openEntities = 0;
    bool inDocumentType = false;
};

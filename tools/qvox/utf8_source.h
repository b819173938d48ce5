// Documents in all of UTF-8, for a library that reads characters of one and three bytes.
//
// They are written anew in UTF-16, without a byte order mark's or a declaration's word on their
// encoding. The library reads no surrogates there either: a character above U+FFFF is disguised as
// three units, a mark that the document doesn't have and two ideographs, and shown again where the
// texts come out.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "document_sink.h"
#include "units.h"

struct Utf8Survey {
    bool needsDecoding = false;
    unsigned short mark = 0;  // 0 where there is no such character
};

// Looks through a file. Throws std::runtime_error where no mark is left to take.
Utf8Survey survey_utf8(const std::string& path);

// Writes the file in UTF-16. What is no UTF-8 becomes a character that is refused in its place.
// Throws std::system_error.
void decode_utf8_file(const std::string& path, const Utf8Survey& survey, std::FILE* to);

// The text without disguise, which is kept in `buffer` where it differs. A mark of 0 is none.
UnitView without_disguise(UnitView text, unsigned short mark, Units& buffer);

// Passes a document on without disguise.
class DisguiseRemover final : public DocumentSink {
public:
    DisguiseRemover(unsigned short disguiseMark, DocumentSink& destination)
        : mark(disguiseMark), next(destination) {}

    void xmlDeclaration(const XmlDeclaration& declaration) override {
        next.xmlDeclaration(declaration);
    }
    void documentType(UnitView text, const Literals& literals) override;
    void startElement(UnitView name, const std::vector<Attribute>& attributes) override;
    void endElement(UnitView name) override { next.endElement(name); }
    void text(UnitView text) override { next.text(plain(text)); }
    void startCdata() override { next.startCdata(); }
    void endCdata() override { next.endCdata(); }
    void comment(UnitView text) override { next.comment(plain(text)); }
    void processingInstruction(UnitView target, UnitView data) override {
        next.processingInstruction(target, plain(data));
    }

private:
    UnitView plain(UnitView text) { return without_disguise(text, mark, buffer); }

    const unsigned short mark;
    DocumentSink& next;
    Units buffer;
    std::vector<Attribute> attributes;
    std::vector<Units> values;
};

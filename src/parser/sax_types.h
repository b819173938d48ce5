// The library's own attributes and locator, as handlers see them.
#pragma once

#include <vector>

#include <qvox/sax.h>

#include "scanner/names.h"
#include "text/lent_text.h"
#include "text/wide.h"

namespace qvox {

class AttributesImpl final : public Attributes {
public:
    int getIndex(const Xstring& uri, const Xstring& localName) const override;
    int getIndex(const Xstring& qName) const override;
    int getLength() const override;
    const Xstring& getLocalName(int index) const override;
    const Xstring& getQName(int index) const override;
    const Xstring& getType(const Xstring& uri, const Xstring& localName) const override;
    const Xstring& getType(const Xstring& qName) const override;
    const Xstring& getType(int index) const override;
    const Xstring& getURI(int index) const override;
    const Xstring& getValue(const Xstring& uri, const Xstring& localName) const override;
    const Xstring& getValue(const Xstring& qName) const override;
    const Xstring& getValue(int index) const override;

    // Forgets all attributes and makes room for `count` new ones.
    void renew(std::size_t count);

    // Appends an attribute, for which there must be room. The names may be null; the texts are
    // lent, not copied.
    void add(const Name* uri, const Name* localName, const Name& qName, const Name* type,
             const LentText& value) {
        records.emplace_back(text_of(uri), text_of(localName), &qName.text, text_of(type), value);
    }

private:
    struct Record {
        Record(const Xstring* uriText, const Xstring* localText, const Xstring* qText,
               const Xstring* typeText, const LentText& valueText)
            : uri(uriText),
              localName(localText),
              qName(qText),
              type(typeText),
              value(valueText.string()) {}

        const Xstring* uri;
        const Xstring* localName;
        const Xstring* qName;
        const Xstring* type;
        Xstring value;
    };

    static const Xstring* text_of(const Name* name) {
        return name != nullptr ? &name->text : &Xstring::Null;
    }
    const Xstring& member(int index, const Xstring* Record::*field) const;

    std::vector<Record> records;
};

class LocatorImpl final : public Locator {
public:
    LocatorImpl(int column, int line, const Xstring& publicIdentifier,
                const Xstring& systemIdentifier);

    int getColumnNumber() const override { return columnNumber; }
    int getLineNumber() const override { return lineNumber; }
    const Xstring& getPublicId() const override { return publicId; }
    const Xstring& getSystemId() const override { return systemId; }

private:
    int columnNumber;
    int lineNumber;
    Xstring publicId;
    Xstring systemId;
};

}  // namespace qvox

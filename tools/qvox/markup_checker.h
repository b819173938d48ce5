// What a document holds, and what in it the parser lets pass without a word.
#pragma once

#include <set>
#include <string>
#include <vector>

#include <qvox/qvox.h>

#include "markup_counter.h"
#include "units.h"

// Attributes that stand twice in a tag, and prefixes that aren't declared.
class MarkupChecker final : public MarkupCounter {
public:
    struct Finding {
        int place;
        std::string message;
    };

    explicit MarkupChecker(int& place) : MarkupCounter(place) {}

    // Makes the parser, whose namespace processing must be on, report to this object. Its error
    // handler stays what it is.
    void attach(qvox::SAXParser& parser);

    long elements() const { return elementCount; }
    const std::string& root() const { return rootName; }  // in UTF-8, escaped
    // Of a prefix the first use.
    const std::vector<Finding>& findings() const { return found; }

    void processingInstruction(const qvox::Xstring& target, const qvox::Xstring& data) override;
    void startElement(const qvox::Xstring& uri, const qvox::Xstring& localName,
                      const qvox::Xstring& qName, const qvox::Attributes& attributes) override;
    void comment(const qvox::Xstring& text) override;
    void endCDATA() override {}
    void startCDATA() override { countMarkup(); }

private:
    void checkPrefix(const qvox::Xstring& qName, const qvox::Xstring& uri);

    long elementCount = 0;
    std::string rootName;
    std::set<Units> undeclaredPrefixes;
    std::vector<Finding> found;
};

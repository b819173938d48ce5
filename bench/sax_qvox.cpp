#include <stdexcept>

#include <qvox/qvox.h>

#include "sax_parsers.h"

namespace bench {
namespace {

class Counter : public qvox::DefaultHandler {
public:
    void startElement(const qvox::Xstring&, const qvox::Xstring&, const qvox::Xstring&,
                      const qvox::Attributes& attributes) override {
        ++tally.elements;
        const int count = attributes.getLength();
        tally.attributes += count;
        for (int i = 0; i < count; ++i) tally.valueLength += attributes.getValue(i).length();
    }

    void characters(const qvox::Xstring& text) override { tally.textLength += text.length(); }

    const Tally& result() const { return tally; }

private:
    Tally tally;
};

Tally parse(const char* fileName, bool namespaces) {
    Counter counter;
    qvox::SAXParser parser;
    parser.setContentHandler(&counter);
    parser.setFeature(qvox::FEATURE_NAMESPACES, namespaces);
    parser.setFeature(qvox::FEATURE_CONCURRENT, true);
    try {
        parser.parse(fileName);
    } catch (const qvox::QVOXException& failure) {
        throw std::runtime_error(std::string("qvox: ") + failure.getMessage().ascii_str());
    }
    return counter.result();
}

const SaxParserRegistration withNamespaces({"qvox", "namespaces on, as by default",
                                            LengthUnit::Unit16, false, true,
                                            [](const char* file) { return parse(file, true); }});
const SaxParserRegistration withoutNamespaces({"qvox-no-ns", "namespaces off", LengthUnit::Unit16,
                                               false, true, [](const char* file) {
                                                   return parse(file, false);
                                               }});

}  // namespace
}  // namespace bench

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

Tally parse(const Source& source) {
    Counter counter;
    qvox::SAXParser parser;
    parser.setContentHandler(&counter);
    parser.setFeature(qvox::FEATURE_CONCURRENT, true);
    try {
        parser.parse(source.fileName.c_str());
    } catch (const qvox::QVOXException& failure) {
        throw std::runtime_error(std::string("qvox: ") + failure.getMessage().ascii_str());
    }
    return counter.result();
}

const SaxParserRegistration registration({"qvox", QVOX_VERSION, LengthUnit::Unit16, true, parse});

}  // namespace
}  // namespace bench

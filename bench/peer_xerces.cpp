#include <memory>
#include <stdexcept>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/util/XercesVersion.hpp>

#include "sax_parsers.h"

namespace bench {
namespace {

namespace xc = xercesc;

/// Brings the library up at the first use, down at the end of the program.
class Platform {
public:
    static void need() { static const Platform platform; }

    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;

private:
    Platform() { xc::XMLPlatformUtils::Initialize(); }
    ~Platform() { xc::XMLPlatformUtils::Terminate(); }
};

class Counter : public xc::DefaultHandler {
public:
    void startElement(const XMLCh*, const XMLCh*, const XMLCh*,
                      const xc::Attributes& attributes) override {
        ++tally.elements;
        const XMLSize_t count = attributes.getLength();
        tally.attributes += static_cast<long>(count);
        for (XMLSize_t i = 0; i < count; ++i) {
            tally.valueLength +=
                static_cast<long>(xc::XMLString::stringLen(attributes.getValue(i)));
        }
    }

    void characters(const XMLCh*, const XMLSize_t length) override {
        tally.textLength += static_cast<long>(length);
    }

    void fatalError(const xc::SAXParseException& failure) override {
        throw std::runtime_error("Xerces-C: error in line " +
                                 std::to_string(failure.getLineNumber()));
    }

    const Tally& result() const { return tally; }

private:
    Tally tally;
};

Tally parse(const Source& source) {
    Platform::need();
    const std::unique_ptr<xc::SAX2XMLReader> reader(xc::XMLReaderFactory::createXMLReader());
    reader->setFeature(xc::XMLUni::fgSAX2CoreNameSpaces, true);
    reader->setFeature(xc::XMLUni::fgSAX2CoreValidation, false);
    Counter counter;
    reader->setContentHandler(&counter);
    reader->setErrorHandler(&counter);
    if (source.allReadTheFile) {
        reader->parse(source.fileName.c_str());
        return counter.result();
    }
    const xc::MemBufInputSource input(reinterpret_cast<const XMLByte*>(source.bytes.data()),
                                      source.bytes.size(), "document");
    reader->parse(input);
    return counter.result();
}

const SaxParserRegistration registration({"Xerces-C", XERCES_FULLVERSIONDOT, LengthUnit::Unit16,
                                          true, parse});

}  // namespace
}  // namespace bench

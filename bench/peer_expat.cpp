#include <cstring>
#include <memory>
#include <stdexcept>

#include <expat.h>

#include "sax_parsers.h"

namespace bench {
namespace {

void startElement(void* data, const XML_Char*, const XML_Char** attributes) {
    Tally& tally = *static_cast<Tally*>(data);
    ++tally.elements;
    for (; *attributes != nullptr; attributes += 2) {
        ++tally.attributes;
        tally.valueLength += static_cast<long>(std::strlen(attributes[1]));
    }
}

void endElement(void*, const XML_Char*) {}

void characters(void* data, const XML_Char*, int length) {
    static_cast<Tally*>(data)->textLength += length;
}

struct FreeParser {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using OwnedParser = std::unique_ptr<XML_ParserStruct, FreeParser>;

Tally parse(const Source& source) {
    const OwnedParser parser(XML_ParserCreateNS(nullptr, ' '));
    Tally tally;
    XML_SetUserData(parser.get(), &tally);
    XML_SetElementHandler(parser.get(), startElement, endElement);
    XML_SetCharacterDataHandler(parser.get(), characters);

    const int size = static_cast<int>(source.bytes.size());
    if (XML_Parse(parser.get(), source.bytes.data(), size, XML_TRUE) != XML_STATUS_OK) {
        throw std::runtime_error(std::string("expat: ") +
                                 XML_ErrorString(XML_GetErrorCode(parser.get())));
    }
    return tally;
}

std::string version() {
    const XML_Expat_Version one = XML_ExpatVersionInfo();
    return std::to_string(one.major) + "." + std::to_string(one.minor) + "." +
           std::to_string(one.micro);
}

const SaxParserRegistration registration({"expat", version(), LengthUnit::Utf8Byte, false, parse});

}  // namespace
}  // namespace bench

#include <cstring>
#include <fcntl.h>
#include <memory>
#include <stdexcept>
#include <unistd.h>

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

XML_Status parseBytes(XML_Parser parser, const std::string& bytes) {
    return XML_Parse(parser, bytes.data(), static_cast<int>(bytes.size()), XML_TRUE);
}

/// It has no call for files: they are read into its buffer.
XML_Status parseFile(XML_Parser parser, const std::string& fileName) {
    constexpr int size = 8192;
    const int file = open(fileName.c_str(), O_RDONLY | O_CLOEXEC);
    XML_Status status = XML_STATUS_OK;
    for (ssize_t count = 1; count > 0 && status == XML_STATUS_OK;) {
        void* const buffer = XML_GetBuffer(parser, size);
        count = buffer != nullptr ? read(file, buffer, size) : -1;
        status = count >= 0 ? XML_ParseBuffer(parser, static_cast<int>(count), count == 0)
                            : XML_STATUS_ERROR;
    }
    close(file);
    return status;
}

Tally parse(const Source& source) {
    const OwnedParser parser(XML_ParserCreateNS(nullptr, ' '));
    Tally tally;
    XML_SetUserData(parser.get(), &tally);
    XML_SetElementHandler(parser.get(), startElement, endElement);
    XML_SetCharacterDataHandler(parser.get(), characters);

    const XML_Status status = source.allReadTheFile ? parseFile(parser.get(), source.fileName)
                                                    : parseBytes(parser.get(), source.bytes);
    if (status != XML_STATUS_OK) {
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

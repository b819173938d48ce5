#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>

#include <expat.h>

#include "sax_parsers.h"

namespace bench {
namespace {

constexpr int blockSize = 64 * 1024;

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

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OwnedFile = std::unique_ptr<std::FILE, CloseFile>;

Tally run(OwnedParser parser, const char* fileName) {
    Tally tally;
    XML_SetUserData(parser.get(), &tally);
    XML_SetElementHandler(parser.get(), startElement, endElement);
    XML_SetCharacterDataHandler(parser.get(), characters);

    const OwnedFile file(std::fopen(fileName, "rb"));
    if (!file) throw std::runtime_error(std::string("expat: cannot open ") + fileName);
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    for (bool last = false; !last;) {
        void* const block = XML_GetBuffer(parser.get(), blockSize);
        if (block == nullptr) throw std::bad_alloc();
        const std::size_t count = std::fread(block, 1, blockSize, file.get());
        last = count < blockSize;
        if (XML_ParseBuffer(parser.get(), static_cast<int>(count), last) != XML_STATUS_OK) {
            throw std::runtime_error(std::string("expat: ") +
                                     XML_ErrorString(XML_GetErrorCode(parser.get())));
        }
    }
    return tally;
}

const SaxParserRegistration withNamespaces(
    {"expat", "with namespaces (XML_ParserCreateNS), blocks of 64 KB", LengthUnit::Utf8Byte, false,
     false,
     [](const char* file) { return run(OwnedParser(XML_ParserCreateNS(nullptr, ' ')), file); }});
const SaxParserRegistration withoutNamespaces(
    {"expat-no-ns", "without namespaces (XML_ParserCreate), blocks of 64 KB", LengthUnit::Utf8Byte,
     true, false,
     [](const char* file) { return run(OwnedParser(XML_ParserCreate(nullptr)), file); }});

}  // namespace
}  // namespace bench

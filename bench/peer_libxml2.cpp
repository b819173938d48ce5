#include <stdexcept>

#include <libxml/parser.h>

#include "sax_parsers.h"

namespace bench {
namespace {

void startElement(void* data, const xmlChar*, const xmlChar*, const xmlChar*, int, const xmlChar**,
                  int attributeCount, int, const xmlChar** attributes) {
    // Five pointers describe an attribute; the last two are the bounds of its value.
    constexpr int stride = 5;
    Tally& tally = *static_cast<Tally*>(data);
    ++tally.elements;
    tally.attributes += attributeCount;
    for (int i = 0; i < attributeCount; ++i, attributes += stride) {
        tally.valueLength += attributes[4] - attributes[3];
    }
}

void endElement(void*, const xmlChar*, const xmlChar*, const xmlChar*) {}

void characters(void* data, const xmlChar*, int length) {
    static_cast<Tally*>(data)->textLength += length;
}

Tally parse(const char* fileName) {
    xmlSAXHandler handler{};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = startElement;
    handler.endElementNs = endElement;
    handler.characters = characters;
    handler.ignorableWhitespace = characters;

    Tally tally;
    const int error = xmlSAXUserParseFile(&handler, &tally, fileName);
    if (error != 0) throw std::runtime_error("libxml2: error " + std::to_string(error));
    return tally;
}

const SaxParserRegistration registration({"libxml2", "SAX2 with namespaces (xmlSAXUserParseFile)",
                                          LengthUnit::Utf8Byte, false, true, parse});

}  // namespace
}  // namespace bench

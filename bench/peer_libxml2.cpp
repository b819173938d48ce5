#include <memory>
#include <stdexcept>

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include "sax_parsers.h"

namespace bench {
namespace {

/// The library calls back with its own context, which is another one inside an entity.
Tally& tallyOf(void* context) {
    return *static_cast<Tally*>(static_cast<xmlParserCtxt*>(context)->_private);
}

void startElement(void* context, const xmlChar*, const xmlChar*, const xmlChar*, int,
                  const xmlChar**, int attributeCount, int, const xmlChar** attributes) {
    // Five pointers describe an attribute; the last two are the bounds of its value.
    constexpr int stride = 5;
    Tally& tally = tallyOf(context);
    ++tally.elements;
    tally.attributes += attributeCount;
    for (int i = 0; i < attributeCount; ++i, attributes += stride) {
        tally.valueLength += attributes[4] - attributes[3];
    }
}

void endElement(void*, const xmlChar*, const xmlChar*, const xmlChar*) {}

void characters(void* context, const xmlChar*, int length) {
    tallyOf(context).textLength += length;
}

struct FreeContext {
    void operator()(xmlParserCtxt* context) const {
        // What the library's own handlers keep of a document type declaration.
        xmlFreeDoc(context->myDoc);
        xmlFreeParserCtxt(context);
    }
};

/// Declarations stay with the library's own handlers, which entities need.
void setHandlers(xmlSAXHandler& handler) {
    handler.startElementNs = startElement;
    handler.endElementNs = endElement;
    handler.characters = characters;
    handler.ignorableWhitespace = characters;
    handler.cdataBlock = characters;
    handler.reference = nullptr;
    handler.comment = nullptr;
    handler.processingInstruction = nullptr;
}

Tally parse(const Source& source) {
    const std::unique_ptr<xmlParserCtxt, FreeContext> context(
        source.allReadTheFile ? xmlCreateFileParserCtxt(source.fileName.c_str())
                              : xmlCreateMemoryParserCtxt(source.bytes.data(),
                                                          static_cast<int>(source.bytes.size())));
    if (!context) throw std::bad_alloc();
    xmlCtxtUseOptions(context.get(), XML_PARSE_NOENT | XML_PARSE_HUGE);
    setHandlers(*context->sax);
    Tally tally;
    context->_private = &tally;
    if (xmlParseDocument(context.get()) != 0) {
        throw std::runtime_error("libxml2: error " + std::to_string(context->errNo));
    }
    return tally;
}

const SaxParserRegistration registration({"libxml2", LIBXML_DOTTED_VERSION, LengthUnit::Utf8Byte,
                                          true, parse});

}  // namespace
}  // namespace bench

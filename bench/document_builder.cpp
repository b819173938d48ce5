#include "document_builder.h"

#include <numeric>

namespace bench {
namespace {

long utf8Bytes(std::u16string_view text) {
    return std::accumulate(text.begin(), text.end(), 0L,
                           [](long sum, char16_t unit) { return sum + utf8Length(unit); });
}

long lengthOf(std::u16string_view text) { return static_cast<long>(text.size()); }

std::u16string escaped(std::u16string_view text) {
    std::u16string result;
    for (const char16_t unit : text) {
        if (unit == u'&') {
            result += u"&amp;";
        } else if (unit == u'<') {
            result += u"&lt;";
        } else {
            result += unit;
        }
    }
    return result;
}

}  // namespace

Tally Contents::expected(LengthUnit unit, bool declarationsAreAttributes) const {
    const bool inUnits = unit == LengthUnit::Unit16;
    Tally tally{elements, attributes, inUnits ? valueUnits : valueUtf8Bytes,
                inUnits ? textUnits : textUtf8Bytes};
    if (declarationsAreAttributes) tally += Tally{0, declarations, declarationUnits, 0};
    return tally;
}

DocumentBuilder::DocumentBuilder(Encoding encoding) : encoder(encoding) {
    if (encoding == Encoding::Utf16) document = "\xFF\xFE";
    markup("<?xml version=\"1.0\" encoding=\"");
    markup(nameOf(encoding));
    markup("\"?>\n");
}

DocumentBuilder& DocumentBuilder::openTag(std::string_view name) {
    ++counted.elements;
    markup("<");
    markup(name);
    return *this;
}

DocumentBuilder& DocumentBuilder::attribute(std::string_view name, std::u16string_view value) {
    ++counted.attributes;
    counted.valueUnits += lengthOf(value);
    counted.valueUtf8Bytes += utf8Bytes(value);
    markup(" ");
    markup(name);
    markup("=\"");
    encoder.append(value, document);
    markup("\"");
    return *this;
}

DocumentBuilder& DocumentBuilder::declareNamespace(std::string_view name, std::string_view uri) {
    ++counted.declarations;
    counted.declarationUnits += static_cast<long>(uri.size());
    markup(" ");
    markup(name);
    markup("=\"");
    markup(uri);
    markup("\"");
    return *this;
}

DocumentBuilder& DocumentBuilder::closeTag() {
    markup(">");
    return *this;
}

DocumentBuilder& DocumentBuilder::closeEmptyTag() {
    markup("/>");
    return *this;
}

DocumentBuilder& DocumentBuilder::endTag(std::string_view name) {
    markup("</");
    markup(name);
    markup(">");
    return *this;
}

DocumentBuilder& DocumentBuilder::text(std::u16string_view content) {
    counted.textUnits += lengthOf(content);
    counted.textUtf8Bytes += utf8Bytes(content);
    encoder.append(escaped(content), document);
    return *this;
}

DocumentBuilder& DocumentBuilder::element(std::string_view name, std::u16string_view content) {
    return openTag(name).closeTag().text(content).endTag(name);
}

void DocumentBuilder::markup(std::string_view ascii) {
    encoder.append(std::u16string(ascii.begin(), ascii.end()), document);
}

}  // namespace bench

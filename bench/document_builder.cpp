#include "document_builder.h"

#include <numeric>

namespace bench {
namespace {

long utf8Bytes(std::u16string_view text) {
    return std::accumulate(text.begin(), text.end(), 0L,
                           [](long sum, char16_t unit) { return sum + utf8Length(unit); });
}

long lengthOf(std::u16string_view text) { return static_cast<long>(text.size()); }

}  // namespace

Tally Contents::expected(LengthUnit unit, bool declarationsAreAttributes) const {
    const bool inUnits = unit == LengthUnit::Unit16;
    Tally tally{elements, attributes, inUnits ? valueUnits : valueUtf8Bytes,
                inUnits ? textUnits : textUtf8Bytes};
    if (declarationsAreAttributes) tally += Tally{0, declarations, declarationUnits, 0};
    return tally;
}

DocumentBuilder::DocumentBuilder(Encoding encoding) : encoder(encoding) {
    if (encoding == Encoding::Utf16Little || encoding == Encoding::Utf16Big) write(u"\uFEFF");
    markup("<?xml version=\"1.0\" encoding=\"");
    markup(nameOf(encoding));
    markup("\"?>\n");
}

DocumentBuilder& DocumentBuilder::internalSubset(std::string_view root,
                                                 std::string_view declarations) {
    markup("<!DOCTYPE ");
    markup(root);
    markup(" [\n");
    markup(declarations);
    markup("]>\n");
    return *this;
}

DocumentBuilder& DocumentBuilder::openTag(std::string_view name) {
    ++counted.elements;
    markup("<");
    markup(name);
    return *this;
}

DocumentBuilder& DocumentBuilder::attribute(std::string_view name, std::u16string_view value) {
    return attribute(name, value, value);
}

DocumentBuilder& DocumentBuilder::attribute(std::string_view name, std::u16string_view value,
                                            std::u16string_view written) {
    countValue(value);
    markup(" ");
    markup(name);
    markup("=\"");
    write(written);
    markup("\"");
    return *this;
}

DocumentBuilder& DocumentBuilder::defaulted(std::u16string_view value) {
    countValue(value);
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
    countText(content);
    write(escaped(content));
    return *this;
}

DocumentBuilder& DocumentBuilder::reference(std::string_view name, std::u16string_view content) {
    countText(content);
    markup("&");
    markup(name);
    markup(";");
    return *this;
}

DocumentBuilder& DocumentBuilder::cdataSection(std::u16string_view content) {
    countText(content);
    markup("<![CDATA[");
    write(content);
    markup("]]>");
    return *this;
}

DocumentBuilder& DocumentBuilder::comment(std::u16string_view content) {
    markup("<!--");
    write(content);
    markup("-->");
    return *this;
}

DocumentBuilder& DocumentBuilder::instruction(std::string_view target, std::u16string_view data) {
    markup("<?");
    markup(target);
    markup(" ");
    write(data);
    markup("?>");
    return *this;
}

DocumentBuilder& DocumentBuilder::element(std::string_view name, std::u16string_view content) {
    return openTag(name).closeTag().text(content).endTag(name);
}

void DocumentBuilder::markup(std::string_view ascii) {
    write(std::u16string(ascii.begin(), ascii.end()));
}

void DocumentBuilder::countValue(std::u16string_view value) {
    ++counted.attributes;
    counted.valueUnits += lengthOf(value);
    counted.valueUtf8Bytes += utf8Bytes(value);
}

void DocumentBuilder::countText(std::u16string_view content) {
    counted.textUnits += lengthOf(content);
    counted.textUtf8Bytes += utf8Bytes(content);
}

std::u16string DocumentBuilder::escaped(std::u16string_view text) const {
    std::u16string result;
    for (const char16_t unit : text) {
        switch (unit) {
            case u'&': result += u"&amp;"; break;
            case u'<': result += u"&lt;"; break;
            case u'\n': result += lineEnd; break;
            default: result += unit;
        }
    }
    return result;
}

}  // namespace bench

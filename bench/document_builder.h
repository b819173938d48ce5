/// \file
/// Builds the bytes of a document and counts what is in it.
#ifndef QVOX_BENCH_DOCUMENT_BUILDER_H
#define QVOX_BENCH_DOCUMENT_BUILDER_H

#include <string>
#include <string_view>

#include "encodings.h"
#include "tally.h"

namespace bench {

/// What a document holds, so that every parser's tally can be checked. Namespace declarations are
/// counted apart, since some parsers report them as attributes.
struct Contents {
    /// What a parser has to report.
    Tally expected(LengthUnit unit, bool declarationsAreAttributes) const;

    long elements = 0;
    long attributes = 0;
    long declarations = 0;
    long valueUnits = 0;
    long valueUtf8Bytes = 0;
    /// In ASCII, so that units and bytes are the same.
    long declarationUnits = 0;
    long textUnits = 0;
    long textUtf8Bytes = 0;
};

/// Writes one document from front to back. Names are ASCII, text is escaped here. Well-formedness
/// is the caller's.
class DocumentBuilder {
public:
    /// Begins with the XML declaration, and in UTF-16 with a byte order mark.
    explicit DocumentBuilder(Encoding encoding);

    /// From now on a line feed of the text is written as CR LF.
    void useCrLf() { lineEnd = u"\r\n"; }

    /// The document type declaration with nothing but these declarations.
    DocumentBuilder& internalSubset(std::string_view root, std::string_view declarations);

    DocumentBuilder& openTag(std::string_view name);
    /// A value without anything to escape.
    DocumentBuilder& attribute(std::string_view name, std::u16string_view value);
    /// A value that is `written` in another way, with references.
    DocumentBuilder& attribute(std::string_view name, std::u16string_view value,
                               std::u16string_view written);
    /// An attribute of the tag in hand that the internal subset supplies.
    DocumentBuilder& defaulted(std::u16string_view value);
    DocumentBuilder& declareNamespace(std::string_view name, std::string_view uri);
    DocumentBuilder& closeTag();
    DocumentBuilder& closeEmptyTag();
    DocumentBuilder& endTag(std::string_view name);

    DocumentBuilder& text(std::u16string_view content);
    /// `&name;`, which stands for the content.
    DocumentBuilder& reference(std::string_view name, std::u16string_view content);
    DocumentBuilder& cdataSection(std::u16string_view content);
    DocumentBuilder& comment(std::u16string_view content);
    DocumentBuilder& instruction(std::string_view target, std::u16string_view data);

    /// An element with nothing but text.
    DocumentBuilder& element(std::string_view name, std::u16string_view content);

    const std::string& bytes() const { return document; }
    const Contents& contents() const { return counted; }

private:
    void markup(std::string_view ascii);
    void write(std::u16string_view text) { encoder.append(text, document); }
    void countValue(std::u16string_view value);
    void countText(std::u16string_view content);
    std::u16string escaped(std::u16string_view text) const;

    Encoder encoder;
    std::u16string lineEnd = u"\n";
    std::string document;
    Contents counted;
};

}  // namespace bench

#endif
